#include "ui/announcements.h"

#include "ui/decisions/spoken.h"

namespace corvane {

namespace {

constexpr int kBurst = 60; // milliseconds

} // namespace

Announcements::Announcements(AppModel &app, Dialogs &dialogs, Commands &commands, Announcer &announcer)
    : m_app(app)
    , m_dialogs(dialogs)
    , m_announcer(announcer)
    , m_outcomes(app.outcomes())
{
    m_burst.setSingleShot(true);
    m_burst.setInterval(kBurst);
    connect(&m_burst, &QTimer::timeout, this, &Announcements::speak);
    followMessages();
    followTests();
    connect(&m_dialogs, &Dialogs::changed, this, &Announcements::followQuestions);
    connect(&commands, &Commands::copied, this, [this] { say(QStringLiteral("Copied.")); });
    connect(&commands, &Commands::walked, this, [this](const QString &place) {
        m_sentences.removeAll(std::exchange(m_place, place));
        say(place);
    });
    for (OperationRunner *runner : {m_app.installOp(), m_app.startOp(), m_app.maintOp()})
        followOperation(runner);
}

void Announcements::followMessages()
{
    const auto follow = [this](auto changed, auto message) {
        connect(&m_app, changed, this, [this, message] { say((m_app.*message)()); });
    };
    follow(&AppModel::noticeChanged, &AppModel::notice);
    follow(&AppModel::startMessageChanged, &AppModel::startMessage);
    follow(&AppModel::apiMessageChanged, &AppModel::apiMessage);
    follow(&AppModel::dnsMessageChanged, &AppModel::dnsMessage);
    follow(&AppModel::updateMessageChanged, &AppModel::updateMessage);
    connect(m_app.comeback(), &Comeback::newsChanged, this, [this] { say(m_app.comeback()->news()); });
    connect(m_app.repair(), &Repair::messageChanged, this, [this] { say(m_app.repair()->message()); });
    connect(&m_app, &AppModel::notesChanged, this, [this] {
        const QString lists = m_app.notes().value(QStringLiteral("lists")).toString();
        if (lists != std::exchange(m_lists, lists)) say(lists);
    });
    connect(&m_app, &AppModel::showDeadDNSBannerChanged, this, [this] {
        if (m_app.showDeadDNSBanner()) say(kDeadDNSWarning);
    });
}

void Announcements::followTests()
{
    connect(&m_app, &AppModel::outcomesChanged, this, &Announcements::sayOutcomes);
    connect(&m_app, &AppModel::busyChanged, this, [this] {
        const bool checked = std::exchange(m_checking, m_app.busy().contains(QStringLiteral("checks")));
        if (checked && !m_checking) sayChecks();
    });
}

void Announcements::followQuestions()
{
    if (m_dialogs.alert() == m_question) return;
    m_question = m_dialogs.alert();
    if (m_question) say(m_question->title + u' ' + m_question->text);
}

void Announcements::followOperation(OperationRunner *runner)
{
    connect(runner, &OperationRunner::runningChanged, this, [this, runner] {
        if (!runner->running() && runner->ended())
            say(spokenEnd(runner->title(), runner->succeeded(), runner->failureText()));
    });
}

void Announcements::sayOutcomes()
{
    const Outcomes before = std::exchange(m_outcomes, m_app.outcomes());
    for (const Row &row : outcomeRows(m_outcomes)) {
        const auto now = m_outcomes.find(row.id);
        if (now != m_outcomes.end() && (!before.contains(row.id) || before.value(row.id) != *now))
            say(spokenOutcome(row));
    }
}

void Announcements::sayChecks() { say(spokenChecks(m_app.systemChecks())); }

void Announcements::say(const QString &sentence)
{
    if (sentence.isEmpty() || m_sentences.contains(sentence)) return;
    m_sentences << sentence;
    m_burst.start();
}

void Announcements::speak() { m_announcer.announce(std::exchange(m_sentences, {}).join(u' ')); }

} // namespace corvane
