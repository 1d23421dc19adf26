#include "runtime/docker_cli.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane::test {
namespace {

constexpr const char *kNotRunning = "Docker is not running. Start Colima first (step 3).";
constexpr const char *kDiskFull = "The Colima disk is full. Free some space (for example 'docker system prune') or "
                                  "recreate Colima with a bigger disk.";
constexpr const char *kPort =
    "A port that Pi-hole needs is already in use. Pick another web port (8081 to 8090) or stop "
    "whatever uses port 53.";
constexpr const char *kNetwork = "Docker could not reach the internet to download Pi-hole. Check your connection (and "
                                 "any VPN) and try again.";
constexpr const char *kPermission = "Docker refused access (permission denied). Check that your user can use Colima's "
                                    "Docker socket.";
constexpr const char *kVersion = "That Pi-hole version does not exist on Docker Hub.";
constexpr const char *kOther = "Docker reported an error. Open 'Show details' to read it.";

struct Row {
    const char *found;
    const char *sentence;
};

const std::vector<Row> kRows = {
    {"cannot connect to the docker daemon", kNotRunning},
    {"is the docker daemon running", kNotRunning},
    {"failed to connect to the docker api", kNotRunning},
    {"no space left on device", kDiskFull},
    {"address already in use", kPort},
    {"port is already allocated", kPort},
    {"ports are not available", kPort},
    {"no such host", kNetwork},
    {"tls handshake timeout", kNetwork},
    {"i/o timeout", kNetwork},
    {"network is unreachable", kNetwork},
    {"temporary failure in name resolution", kNetwork},
    {"dial tcp", kNetwork},
    {"failed to resolve", kNetwork},
    {"permission denied", kPermission},
    {"manifest unknown", kVersion},
    {"not found: manifest", kVersion},
};

std::string worded(const QString &text) { return DockerCLI::friendlyError(text).toStdString(); }

TEST(DockerWording, Every_known_error_has_its_sentence_in_any_case)
{
    for (const Row &row : kRows) {
        const QString text = QStringLiteral("Error: ") + QString::fromLatin1(row.found) + QStringLiteral(" (x)\n");
        EXPECT_EQ(worded(text), row.sentence) << row.found;
        EXPECT_EQ(worded(text.toUpper()), row.sentence) << row.found;
    }
}

TEST(DockerWording, The_earlier_of_two_errors_decides_wherever_it_stands)
{
    for (std::size_t first = 0; first < kRows.size(); ++first) {
        for (std::size_t second = first + 1; second < kRows.size(); ++second) {
            const QString a = QString::fromLatin1(kRows[first].found);
            const QString b = QString::fromLatin1(kRows[second].found);
            EXPECT_EQ(worded(a + u'\n' + b), kRows[first].sentence)
                << kRows[first].found << ", " << kRows[second].found;
            EXPECT_EQ(worded(b + u'\n' + a), kRows[first].sentence)
                << kRows[second].found << ", " << kRows[first].found;
        }
    }
}

TEST(DockerWording, Every_row_is_needed)
{
    for (const Row &row : kRows) {
        const QString text = QString::fromLatin1(row.found);
        EXPECT_EQ(worded(text.chopped(1)), kOther) << row.found;
        EXPECT_EQ(worded(text.mid(1)), kOther) << row.found;
    }
}

TEST(DockerWording, What_docker_really_prints_is_understood)
{
    EXPECT_EQ(
        worded(QStringLiteral("Cannot connect to the Docker daemon at unix:///Users/a/.colima/default/docker.sock. "
                              "Is the docker daemon running?")),
        kNotRunning);
    EXPECT_EQ(
        worded(QStringLiteral("docker: Error response from daemon: driver failed programming external connectivity "
                              "on endpoint pihole: Bind for 127.0.0.1:53 failed: port is already allocated.")),
        kPort);
    EXPECT_EQ(
        worded(QStringLiteral("Error response from daemon: manifest for pihole/pihole:2099.01.0 not found: manifest "
                              "unknown: manifest unknown")),
        kVersion);
    EXPECT_EQ(
        worded(QStringLiteral("Get \"https://registry-1.docker.io/v2/\": dial tcp: lookup registry-1.docker.io on "
                              "192.168.5.1:53: read udp: i/o timeout")),
        kNetwork);
}

TEST(DockerWording, Anything_else_points_to_the_details)
{
    EXPECT_EQ(worded(QString()), kOther);
    EXPECT_EQ(worded(QStringLiteral("docker was not found")), kOther);
    EXPECT_EQ(worded(QStringLiteral("manifest  unknown")), kOther);
}

} // namespace
} // namespace corvane::test
