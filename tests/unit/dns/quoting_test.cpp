#include "dns/admin_script.h"
#include "dns/dns_configurator.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <optional>
#include <random>

namespace corvane::test {
namespace {

/// What one command was given, in bytes: decoding them would lose a byte order mark.
using Arguments = QByteArrayList;

const QString kTool = QStringLiteral("/usr/sbin/networksetup");

/// Reads an AppleScript that runs a shell script as administrator, the way AppleScript reads a string.
std::optional<QString> shellScriptIn(const QString &appleScript)
{
    const QString before = QStringLiteral("do shell script \"");
    const QString after = QStringLiteral("\" with administrator privileges");
    if (!appleScript.startsWith(before)) return std::nullopt;

    QString script;
    qsizetype at = before.size();
    while (at < appleScript.size() && appleScript[at] != u'"') {
        if (appleScript[at] == u'\\') {
            ++at;
            if (at == appleScript.size() || (appleScript[at] != u'\\' && appleScript[at] != u'"')) return std::nullopt;
        }
        script += appleScript[at++];
    }
    if (appleScript.mid(at) != after) return std::nullopt;
    return script;
}

class RandomTexts {
public:
    QString word()
    {
        const auto length = m_random() % 24;
        QString text = m_random() % 8 == 0 ? QStringLiteral("-") : QString();
        for (std::size_t i = 0; i < length; ++i)
            text += m_pieces[static_cast<qsizetype>(m_random() % std::size_t(m_pieces.size()))];
        return text;
    }

    QStringList words(std::size_t atMost)
    {
        QStringList list;
        for (std::size_t i = m_random() % (atMost + 1); i > 0; --i)
            list += word();
        return list;
    }

private:
    static QStringList pieces()
    {
        QStringList pieces{
            QStringLiteral("'\\''"),  QStringLiteral("''"),
            QStringLiteral("\\\""),   QStringLiteral("\r\n"),
            QStringLiteral("$(id)"),  QStringLiteral("`id`"),
            QStringLiteral("${PWD}"), QStringLiteral("$'\\n'"),
            QStringLiteral(" && "),   QStringLiteral("; touch x"),
            QStringLiteral("> x"),    QStringLiteral("Empty"),
            QStringLiteral("🙂"),   QStringLiteral("👩‍👩‍👧"),
            QStringLiteral("é"),      QStringLiteral("日本"),
            QString(QChar(0x200f)),   QString(QChar(0x202e)),
            QString(QChar(0x00a0)),   QString(QChar(0xfeff)),
            QString(QChar(0x85)),     QString(QChar(0x2028)),
            QStringLiteral("*"),      QStringLiteral("~"),
        };
        for (char16_t c = 1; c < 128; ++c)
            pieces += QString(QChar(c));
        for (const char16_t c : u"'\"\\$`\n'\"\\") {
            if (c != 0) pieces += QString(QChar(c));
        }
        return pieces;
    }

    std::mt19937 m_random{20260921};
    const QStringList m_pieces = pieces();
};

Arguments expectedFor(const QString &service, const QStringList &servers)
{
    Arguments arguments{"-setdnsservers", service.toUtf8()};
    for (const QString &server : servers)
        arguments += server.toUtf8();
    if (servers.isEmpty()) arguments += "Empty";
    return arguments;
}

/// Runs the script with the real shell, the tool replaced by `recorder`, in an empty folder where nothing else can be
/// found.
QByteArray outputOf(QString script, const QString &prelude, const QString &recorder)
{
    QTemporaryDir folder;
    script.replace(kTool, recorder);
    QProcess shell;
    shell.setWorkingDirectory(folder.path());
    QProcessEnvironment nothing;
    nothing.insert(QStringLiteral("PATH"), QStringLiteral("/nonexistent"));
    shell.setProcessEnvironment(nothing);
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), prelude + script});
    if (!shell.waitForFinished(60000)) ADD_FAILURE() << "the shell did not end";
    EXPECT_EQ(shell.exitCode(), 0);
    EXPECT_EQ(shell.readAllStandardError().toStdString(), "");
    EXPECT_TRUE(QDir(folder.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    return shell.readAllStandardOutput();
}

Arguments parted(QByteArray output)
{
    if (output.endsWith('\0')) output.chop(1);
    return output.split('\0');
}

/// The commands in one script that has been through an AppleScript, without the flush at its end.
std::optional<QString> scriptOf(const QStringList &commands)
{
    return shellScriptIn(AdminScript::appleScript(commands.join(QStringLiteral(" && "))));
}

/// Random services and servers reach a real shell's function as they are.
void sendThrough(int count)
{
    constexpr int kInOneScript = 200;
    // A command is its number of arguments and then these.
    const QString prelude = QStringLiteral("record() { printf '%s\\0' $# \"$@\"; }\n");

    RandomTexts texts;
    for (int done = 0; done < count; done += kInOneScript) {
        QStringList commands;
        Arguments expected;
        for (int i = 0; i < kInOneScript; ++i) {
            const QString service = texts.word();
            const QStringList servers = texts.words(3);
            const Arguments arguments = expectedFor(service, servers);
            commands += DNSConfigurator::setCommand(service, servers);
            expected += QByteArray::number(arguments.size());
            expected += arguments;
        }
        const auto script = scriptOf(commands);
        ASSERT_TRUE(script) << done;
        ASSERT_EQ(parted(outputOf(*script, prelude, QStringLiteral("record"))), expected) << done;
    }
}

TEST(Quoting, A_hundred_thousand_random_services_and_servers_arrive_as_they_are) { sendThrough(100'000); }

TEST(Quoting, DISABLED_A_million_random_services_and_servers_arrive_as_they_are) { sendThrough(1'000'000); }

TEST(Quoting, A_real_program_gets_the_same_arguments)
{
    RandomTexts texts;
    for (int i = 0; i < 200; ++i) {
        const QString service = texts.word();
        const QStringList servers = texts.words(4);
        const auto script = scriptOf({DNSConfigurator::setCommand(service, servers)});
        ASSERT_TRUE(script);
        EXPECT_EQ(parted(outputOf(*script, {}, QStringLiteral("/usr/bin/printf '%s\\0'"))),
                  expectedFor(service, servers));
    }
}

TEST(Quoting, The_flush_at_the_end_hides_no_failure_and_makes_none)
{
    const QStringList commands{DNSConfigurator::setCommand(QStringLiteral("A"), {}),
                               DNSConfigurator::setCommand(QStringLiteral("B"), {})};
    const auto run = [&](const QString &recorder) {
        QString script = *shellScriptIn(AdminScript::appleScript(AdminScript::joined(commands)));
        script.replace(kTool, recorder);
        QProcess shell;
        shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
        shell.waitForFinished(60000);
        return std::pair(shell.exitCode(), shell.readAllStandardOutput());
    };
    EXPECT_EQ(run(QStringLiteral("echo")),
              std::pair(0, QByteArray("-setdnsservers A Empty\n-setdnsservers B Empty\n")));
    const auto stopped = run(QStringLiteral("sh -c 'echo $0 $1; exit 4'"));
    EXPECT_EQ(stopped, std::pair(4, QByteArray("-setdnsservers A\n")));
}

} // namespace
} // namespace corvane::test
