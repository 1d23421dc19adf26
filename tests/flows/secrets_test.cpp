#include "app/admin_password.h"
#include "runtime/pihole_controller.h"
#include "tests/flows/in_state.h"
#include "tests/story/story.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QMetaProperty>

namespace corvane::test {

namespace {

/// Collects everything that the program says on its own standard streams.
QStringList &spoken()
{
    static QStringList lines;
    return lines;
}

void hear(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &message) { spoken() += message; }

QStringList textsOf(const CheckRows &rows)
{
    QStringList texts;
    for (const CheckRow &row : rows)
        texts << row.title << row.detail;
    return texts;
}

/// Every text that a view can read, but the two fields that hold the password by their nature.
QString published(AppModel &model)
{
    QStringList texts = textsOf(model.systemChecks()) + textsOf(model.piholeChecks());
    const QMetaObject *meta = model.metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QLatin1StringView name(meta->property(i).name());
        if (name == QLatin1String("passwordInput") || name == QLatin1String("adminPassword")) continue;
        if (meta->property(i).metaType() == QMetaType::fromType<QString>())
            texts += meta->property(i).read(&model).toString();
    }
    for (const TestOutcome &outcome : model.outcomes())
        texts += outcome.summary;
    for (const PortReport &report : model.portReports())
        texts += report.holder;
    if (model.blockingTest()) texts << model.blockingTest()->note.value_or(QString());
    for (OperationRunner *operation : {model.installOp(), model.startOp(), model.maintOp(), model.followOp()})
        texts << operation->lines() << operation->failureText() << operation->title();
    return texts.join(u'\n');
}

/// The files of this Mac that hold the text; the keyring's own store, which is encrypted, among those searched.
QStringList filesWith(const QByteArray &text)
{
    QStringList found;
    for (const char *place : {"/Users", "/tmp", "/var", "/etc", "/Applications", "/Library"}) {
        QDirIterator files(QString::fromLatin1(place), QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly) && file.readAll().contains(text)) found += file.fileName();
        }
    }
    return found;
}

class Secrets : public Homebrew {
protected:
    Secrets()
    {
        spoken().clear();
        qInstallMessageHandler(hear);
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
    }
    ~Secrets() override { qInstallMessageHandler(nullptr); }

    void look() { m_seen += published(model()); }

    void tell()
    {
        const Story story(model());
        for (const Story::Step &step : story.steps()) {
            step.act();
            ASSERT_TEXT(step.problem(), "") << step.text.toStdString();
            look();
        }
    }

    void expectKept(const QString &password)
    {
        ASSERT_GE(password.size(), 8);
        EXPECT_FALSE(m_seen.contains(password)) << "in a published text or a log";
        EXPECT_FALSE(spoken().join(u'\n').contains(password)) << "in what the program says";
        const QJsonArray journal = Mac::ctl(QStringLiteral("journal")).toArray();
        EXPECT_GT(journal.size(), 20) << "every child is on record";
        for (const QJsonValue &call : journal) {
            const QByteArray record = QJsonDocument(call.toObject()).toJson(QJsonDocument::Compact);
            EXPECT_FALSE(record.contains(password.toUtf8())) << "in a child: " << record.left(400).toStdString();
        }
    }

private:
    QString m_seen;
};

} // namespace

TEST_F(Secrets, The_password_of_the_whole_story_stands_in_one_file_that_only_its_owner_reads)
{
    tell();
    const QString password = model().adminPassword();
    expectKept(password);
    EXPECT_EQ(filesWith(password.toUtf8()), QStringList{PiholeController::environmentFile()});
    EXPECT_EQ(QFile::permissions(PiholeController::environmentFile()) &
                  ~(QFileDevice::ReadUser | QFileDevice::WriteUser),
              QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

TEST_F(Secrets, No_trouble_on_the_way_brings_a_password_out)
{
    tell();
    const QString first = model().adminPassword();
    // Made up now, so that neither this program nor its source holds them wherever they are mounted.
    const QString second = AdminPassword::generate();
    const QString third = AdminPassword::generate();
    Mac::ctl(QStringLiteral("compose on"));
    for (const char *fault : {"fault docker fail 1 --when compose*", "fault docker rubbish --when compose*",
                              "fault docker flood 1 --when compose*", "fault docker die SEGV --when compose*"}) {
        Mac::ctl(QString::fromLatin1(fault));
        run(model().refreshTools());
        model().setComposeAvailable(true);
        model().setPasswordInput(second);
        run(model().startPihole());
        Story::settle(model());
        look();
        Mac::ctl(QStringLiteral("fault clear"));
    }
    model().setAdminPassword(third); // Pi-hole refuses it, and the log is loaded
    run(model().refreshStatus(Stats::Include));
    run(model().runBlockingTest());
    run(model().runSystemTest());
    run(model().loadLogs());
    look();
    expectKept(first);
    expectKept(second);
    expectKept(third);
    EXPECT_EQ(filesWith(second.toUtf8()), QStringList{PiholeController::environmentFile()});
    EXPECT_EQ(filesWith(first.toUtf8()), QStringList()) << "the old one is gone";
}

} // namespace corvane::test
