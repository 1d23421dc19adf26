// What is made of the real words in which Homebrew, Colima and Docker fail.

#include "runtime/machine_port.h"
#include "runtime/tool_failures.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <algorithm>

namespace corvane::test {
namespace {

using Remedy = FailureReading::Remedy;

/// A recorded failure, how the sentence about it begins, a part of the line that is shown, and what helps.
struct Known {
    const char *file;
    const char *sentence;
    const char *line;
    Remedy remedy = Remedy::None;
};

constexpr Known kKnown[] = {
    {"brew_no_network", "Homebrew could not download", "Could not resolve host: ghcr.io"},
    {"brew_update_failed", "Homebrew could not download", "Could not resolve host: github.com"},
    {"brew_timeout", "Homebrew could not download", "curl: (28)"},
    {"brew_not_writable", "Homebrew's folders do not belong", "sudo chown -R ada /opt/homebrew/share"},
    {"brew_permission_denied", "Homebrew was not allowed", "/opt/homebrew/Cellar/lima"},
    {"brew_locked", "Another Homebrew command is running", "has already locked /opt/homebrew/Cellar/docker."},
    {"brew_locked_before_6", "Another Homebrew command is running", "Another active Homebrew process"},
    {"brew_disk_full", "This Mac's disk is full", "No space left on device @ io_write"},
    {"brew_no_developer_tools", "Homebrew needs Apple's Command Line Tools", "No developer tools installed."},
    {"brew_no_git", "Homebrew needs Apple's Command Line Tools", "No developer tools were found"},
    {"brew_tools_removed", "Homebrew needs Apple's Command Line Tools", "invalid active developer path"},
    {"brew_old_developer_tools", "Apple's Command Line Tools are too old", "too outdated"},
    {"brew_launchd_refused", "macOS did not accept Homebrew's login service", "Bootstrap failed: 5: Input/output error",
     Remedy::StartColimaByHand},
    {"brew_not_linked", "Homebrew installed a program, but", "`brew link` step"},
    {"brew_root", "Homebrew does not work for the user root", "Running Homebrew as root"},
    {"brew_unknown_formula", "This Homebrew does not know", "Did you mean lima?"},
    {"brew_certificate", "Homebrew did not trust", "curl: (60)"},
    {"brew_refused", "The server refused Homebrew's download", "error: 403"},
    {"brew_damaged", "A file arrived damaged", "SHA-256 mismatch"},
    {"colima_no_network", "Colima could not download", "DNS lookup failed for host 'github.com'"},
    {"colima_timeout", "Colima could not download", "connection timed out"},
    {"colima_curl_network", "Colima could not download", "exit status 56"},
    {"colima_resume_failed", "Colima could not download", "resume failed for"},
    {"colima_server_error", "The server did not give Colima", "server error (503)"},
    {"colima_damaged", "The disk image that Colima downloaded is damaged", "SHA512 checksum mismatch"},
    {"colima_certificate", "Colima did not trust", "x509: certificate signed by unknown authority"},
    {"colima_curl_certificate", "Colima did not trust", "exit status 60"},
    {"colima_machine_failed", "macOS could not start Colima's virtual machine",
     "(hint: see \"/Users/ada/.colima/_lima/colima/ha.stderr.log\")"},
    {"colima_disk_in_use", "Colima did not end properly", "failed to run attach disk \"colima\"",
     Remedy::StopColimaFirst},
    {"colima_host_agent_gone", "Colima did not end properly", "host agent is not", Remedy::StopColimaFirst},
    {"colima_disk_full", "This Mac's disk is full", "no space left on device"},
    {"colima_machine_disk_full", "The disk of Colima's virtual machine is full", "no space left on device"},
    {"colima_permission_denied", "Colima may not use a file", "colima.yaml: permission denied"},
    {"colima_docker_failed", "Docker did not start inside Colima", "error starting docker", Remedy::StopColimaFirst},
    {"colima_old_lima", "Lima, on which Colima runs, is too old", "current version is v0.17.2"},
    {"colima_no_docker", "Colima needs the docker command", "docker not found"},
    {"colima_no_ssh", "Colima's virtual machine did not come up", "did not receive an event", Remedy::StopColimaFirst},
    {"colima_no_virtualisation", "This Mac does not let Colima run", "not available on this hardware"},
    {"docker_no_such_version", "Docker Hub does not have this Pi-hole version", ": not found"},
    {"docker_no_such_version_old_store", "Docker Hub does not have this Pi-hole version", "manifest unknown"},
    {"docker_limit_status", "Docker Hub's download limit", "429 Too Many Requests"},
    {"docker_limit_old_store", "Docker Hub's download limit", "toomanyrequests"},
    {"docker_limit_new_words", "Docker Hub's download limit", "error from registry"},
    {"docker_limit_layer", "Docker Hub's download limit", "httpReadSeeker"},
    {"docker_refused", "Docker Hub refused", "403 Forbidden"},
    {"docker_wrong_login", "Docker Hub refused", "401 Unauthorized"},
    {"docker_denied", "Docker Hub refused", "pull access denied"},
    {"docker_certificate", "Docker did not trust", "x509"},
    {"docker_no_network",
     "Docker could not reach the internet to download Pi-hole. Check your connection (and any VPN) "
     "and try again. If this Mac uses Pi-hole only",
     "no such host"},
    {"docker_client_timeout", "Docker could not reach the internet", "Client.Timeout exceeded"},
    {"docker_layer_broke_off", "Docker could not reach the internet", "EOF"},
    {"docker_credential_helper", "Docker asks a helper for passwords", "docker-credential-desktop"},
    {"docker_other_context", "docker talks to another program", "unix:///Users/ada/.docker/run/docker.sock"},
    {"docker_other_context_before_29", "docker talks to another program", "unix:///Users/ada/.docker/run/docker.sock"},
    {"docker_client_too_old", "The docker command on this Mac is too old", "client version 1.43"},
    {"docker_client_too_new", "Colima's Docker is too old", "client version 1.52"},
    {"docker_no_architecture", "Docker Hub does not have this Pi-hole version for this kind", "linux/arm64/v8"},
    {"docker_port_53_in_machine_29", "Port 53 is taken inside Colima's virtual machine", "127.0.0.1:53/tcp"},
    {"docker_port_53_in_machine_28", "Port 53 is taken inside Colima's virtual machine", "127.0.0.1:53:172.17.0.2"},
    {"docker_port_53_in_machine_27", "Port 53 is taken inside Colima's virtual machine", "listen udp4 127.0.0.1:53"},
    {"docker_port_53_of_a_container", "Another container in Colima holds port 53", "127.0.0.1:53 failed"},
    {"docker_web_port_of_a_container", "Another container in Colima holds a port", "127.0.0.1:8080 failed"},
    {"docker_web_port_in_machine", "A port that Pi-hole needs is taken inside", "127.0.0.1:8080/tcp"},
    {"docker_name_taken", "An old container named \"pihole\"", "Conflict."},
    {"docker_broken_off", "Docker broke off", "error during connect"},
};

/// What the general sentence is right for.
constexpr const char *kNotForUs[] = {"docker_engine_stopped", "docker_no_socket", "docker_disk_full"};

QStringList linesOf(const char *file)
{
    QFile text(QStringLiteral(CORVANE_TEST_DATA "/tools/failures/%1.txt").arg(QLatin1String(file)));
    EXPECT_TRUE(text.open(QIODevice::ReadOnly)) << file;
    return QString::fromUtf8(text.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

FailureReading readingOf(const char *file)
{
    FailedStep failed;
    failed.step.exe = QStringLiteral("/opt/homebrew/bin/") + QString::fromLatin1(file).section(u'_', 0, 0);
    failed.lines = linesOf(file);
    return ToolFailures::read(failed);
}

class ToolFailure : public testing::TestWithParam<Known> {};

TEST_P(ToolFailure, Is_told_as_what_it_is_with_the_line_that_says_so)
{
    const Known &known = GetParam();
    const FailureReading reading = readingOf(known.file);
    EXPECT_TRUE(reading.sentence.startsWith(QString::fromUtf8(known.sentence))) << reading.sentence.toStdString();
    EXPECT_TRUE(reading.sentence.endsWith(u'.'));
    EXPECT_TRUE(reading.line.contains(QString::fromUtf8(known.line))) << reading.line.toStdString();
    EXPECT_FALSE(reading.line.startsWith(QLatin1String("time="))) << "a person reads it";
    EXPECT_EQ(reading.remedy, known.remedy);
}

INSTANTIATE_TEST_SUITE_P(Recorded, ToolFailure, testing::ValuesIn(kKnown),
                         [](const auto &known) { return std::string(known.param.file); });

TEST(ToolFailures, Say_nothing_where_the_general_sentence_is_right)
{
    for (const char *file : kNotForUs)
        EXPECT_EQ(readingOf(file), FailureReading()) << file;
}

TEST(ToolFailures, Every_recorded_failure_is_judged)
{
    const QDir folder(QStringLiteral(CORVANE_TEST_DATA "/tools/failures"));
    EXPECT_EQ(folder.entryList(QDir::Files).size(), qsizetype(std::size(kKnown) + std::size(kNotForUs)));
}

TEST(ToolFailures, Are_read_in_the_words_of_the_tool_that_failed)
{
    FailedStep failed;
    failed.lines = linesOf("docker_limit_old_store");
    for (const char *tool : {"/opt/homebrew/bin/brew", "/opt/homebrew/bin/colima", "/usr/bin/true", ""}) {
        failed.step.exe = QString::fromLatin1(tool);
        EXPECT_EQ(ToolFailures::read(failed), FailureReading()) << tool;
    }
}

TEST(ToolFailures, Warnings_are_not_the_cause)
{
    EXPECT_EQ(ToolFailures::homebrew({QStringLiteral("Warning: Permission denied @ apply2files - /opt/homebrew/lib"),
                                      QStringLiteral("Error: something else")}),
              FailureReading());
    EXPECT_EQ(ToolFailures::colima({QStringLiteral("time=\"x\" level=warning msg=\"open /a: permission denied\""),
                                    QStringLiteral("time=\"x\" level=fatal msg=\"something else\"")}),
              FailureReading());
}

TEST(ToolFailures, A_machine_that_makes_no_room_is_told_whatever_it_says)
{
    FailedStep failed;
    failed.step.label = MachinePort::kMakingRoom;
    failed.step.exe = QStringLiteral("/opt/homebrew/bin/colima");
    failed.lines = QStringList{QStringLiteral("Job for dnsmasq.service failed."), QStringLiteral("exit status 1")};
    const FailureReading reading = ToolFailures::read(failed);
    EXPECT_EQ(
        reading.sentence,
        QStringLiteral("Colima's virtual machine could not make room for Pi-hole: its own name service keeps port "
                       "53. Restart Colima (\"colima restart\" in Terminal), then try again."));
    EXPECT_EQ(reading.line, QStringLiteral("exit status 1"));
    failed.lines.clear();
    EXPECT_FALSE(ToolFailures::read(failed).sentence.isEmpty());
}

/// What differs from a tool's words by a letter may be about something else.
TEST(ToolFailures, Words_count_as_a_whole)
{
    for (const char *line : {"no space left on device: /var/lib/docke", "error downloadin", "error starting docke",
                             "minimum lima version supporte", "virtualization is not availabl", "resume failed fo"})
        EXPECT_EQ(ToolFailures::colima({QString::fromLatin1(line)}).sentence, QString()) << line;
    for (const char *line : {"not writable by your use", "no space left on devic", "permission denied ",
                             "no developer tools were foun", "running homebrew as roo", "has already locke"})
        EXPECT_EQ(ToolFailures::homebrew({QString::fromLatin1(line)}).sentence, QString()) << line;
    for (const char *line : {"address already in use: listen tc", "client.timeout exceede", "unexpected eo"})
        EXPECT_EQ(ToolFailures::docker({QString::fromLatin1(line)}).sentence, QString()) << line;
}

TEST(ToolFailures, The_command_that_helps_is_shown_and_no_line_that_looks_like_it)
{
    const QStringList lines{QStringLiteral("The following directories are not writable by your user:"),
                            QStringLiteral("  sudo chow /opt/homebrew"), QStringLiteral("  sudo chown -R ada /opt/x")};
    EXPECT_EQ(ToolFailures::homebrew(lines).line, QStringLiteral("sudo chown -R ada /opt/x"));
}

TEST(ToolFailures, Nothing_printed_tells_nothing)
{
    EXPECT_EQ(ToolFailures::homebrew({}), FailureReading());
    EXPECT_EQ(ToolFailures::colima({QString()}), FailureReading());
    EXPECT_EQ(ToolFailures::docker({QStringLiteral("time= level=fatal msg=\"")}), FailureReading());
}

} // namespace
} // namespace corvane::test
