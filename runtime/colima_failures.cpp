#include "runtime/failure_table.h"
#include "runtime/tool_failures.h"

#include <QRegularExpression>

namespace corvane {

namespace {

using Words = QLatin1StringView;
using Remedy = FailureReading::Remedy;

constexpr Words kLeftBehind{"Colima did not end properly the last time, and what is left of it is in the way. Start "
                            "Colima again: Corvane then clears that away first (colima stop --force)."};
constexpr Words kMacDiskFull{"This Mac's disk is full. Free some space, then start Colima again."};
constexpr Words kMachineDiskFull{"The disk of Colima's virtual machine is full. Run \"docker system prune\" in "
                                 "Terminal, or make the disk larger with \"colima start --disk 20\"."};
constexpr Words kOldLima{"Lima, on which Colima runs, is too old. Run \"brew upgrade lima colima\" in Terminal, then "
                         "start Colima again."};
constexpr Words kNoDocker{"Colima needs the docker command, which is not installed. Install it in step 3, then start "
                          "Colima again."};
constexpr Words kDamaged{"The disk image that Colima downloaded is damaged. Delete the folder Library/Caches/colima in "
                         "your home folder, then start Colima again."};
constexpr Words kInspected{"Colima did not trust the answer from the internet: something in between, such as a "
                           "company's proxy or a virus scanner, puts its own certificate there. Try another network or "
                           "ask whoever looks after this Mac."};
constexpr Words kNoImage{"The server did not give Colima the disk image for its virtual machine. Try again later; if "
                         "it stays so, run \"brew upgrade colima\" in Terminal."};
constexpr Words kNoNetwork{"Colima could not download the disk image for its virtual machine. Check your internet "
                           "connection (and any VPN), then start Colima again."};
constexpr Words kNotAllowed{"Colima may not use a file of its own. It has to belong to your user, which it does not "
                            "when Colima was once started with sudo. The line below names it."};
constexpr Words kNoVirtualisation{"This Mac does not let Colima run a virtual machine. That is so on a Mac that is a "
                                  "virtual machine itself, and on a Mac whose macOS is older than 13."};
constexpr Words kMachineFailed{"macOS could not start Colima's virtual machine. Restart this Mac, then start Colima "
                               "again."};
constexpr Words kMachineSilent{"Colima's virtual machine did not come up in time. Start Colima again: Corvane then "
                               "clears away what is left of it first (colima stop --force)."};
constexpr Words kDockerFailed{"Docker did not start inside Colima's virtual machine. Start Colima again: Corvane then "
                              "stops the machine first (colima stop --force)."};

constexpr KnownFailure kFailures[] = {
    {Words("in use by instance"), {}, kLeftBehind, {}, Remedy::StopColimaFirst},
    {Words("driver is running but host agent is not"), {}, kLeftBehind, {}, Remedy::StopColimaFirst},
    {Words("no space left on device"), Words("/users/"), kMacDiskFull},
    {Words("no space left on device"), Words("/var/folders/"), kMacDiskFull},
    {Words("no space left on device"), Words("docker"), kMachineDiskFull},
    {Words("minimum lima version supported"), {}, kOldLima},
    {Words("docker not found, run 'brew install"), {}, kNoDocker},
    {Words("checksum mismatch"), {}, kDamaged},
    {Words("x509:"), {}, kInspected},
    {Words("download"), Words("exit status 60"), kInspected},
    {Words("access forbidden to 'http"), {}, kNoImage},
    {Words("file not found at 'http"), {}, kNoImage},
    {Words("authentication required for 'http"), {}, kNoImage},
    {Words("server error ("), Words("at 'http"), kNoImage},
    {Words("dns lookup failed for host"), {}, kNoNetwork},
    {Words("failed for 'http"), {}, kNoNetwork},
    {Words("resume failed for"), {}, kNoNetwork},
    {Words("error downloading"), {}, kNoNetwork},
    {Words("error during image download"), {}, kNoNetwork},
    {Words("permission denied"), Words("open /"), kNotAllowed},
    {Words("permission denied"), Words("mkdir /"), kNotAllowed},
    {Words("virtualization is not available"), {}, kNoVirtualisation},
    {Words("virtualization is not supported"), {}, kNoVirtualisation},
    {Words("driver requires macos"), {}, kNoVirtualisation},
    {Words("did not receive an event with the"), {}, kMachineSilent, {}, Remedy::StopColimaFirst},
    {Words("did not start up in"), Words("hostagent"), kMachineSilent, {}, Remedy::StopColimaFirst},
    {Words("exiting, status={running:false"), {}, kMachineFailed},
    {Words("error starting docker"), {}, kDockerFailed, {}, Remedy::StopColimaFirst},
};

/// What a line in logfmt says; a line of another kind as it is.
QString message(const QString &line)
{
    static const QRegularExpression pattern(QStringLiteral("^time=.*? level=\\w+ msg=\"((?:[^\"\\\\]|\\\\.)*+)\""));
    const QRegularExpressionMatch match = pattern.match(line);
    if (!match.hasMatch()) return line;
    QString text = match.captured(1);
    text.replace(Words("\\n"), Words(" "));
    return text.replace(Words("\\\""), Words("\""));
}

bool isComplaint(const QString &line)
{
    return !line.startsWith(Words("time=")) || line.contains(Words(" level=fatal ")) ||
           line.contains(Words(" level=error "));
}

} // namespace

FailureReading ToolFailures::colima(const QStringList &lines)
{
    QStringList messages;
    for (const QString &line : lines) {
        // A good start may warn of what did not work inside; only what is fatal or plain text is the cause.
        if (isComplaint(line)) messages += message(line);
    }
    return firstKnown(kFailures, messages);
}

} // namespace corvane
