#include "runtime/failure_table.h"
#include "runtime/tool_failures.h"

namespace corvane {

namespace {

using Words = QLatin1StringView;

constexpr Words kLocked{"Another Homebrew command is running. Wait until it has finished, then try again."};
constexpr Words kNotOwned{"Homebrew's folders do not belong to your user. Run the command below in Terminal, then try "
                          "again."};
constexpr Words kNotAllowed{"Homebrew was not allowed to write to its own folder. Run \"brew doctor\" in Terminal: it "
                            "says how to put that right. Then try again."};
constexpr Words kDiskFull{"This Mac's disk is full. Free some space, then try again."};
constexpr Words kNoDeveloperTools{"Homebrew needs Apple's Command Line Tools. Run \"xcode-select --install\" in "
                                  "Terminal, wait until they are installed, then try again."};
constexpr Words kOldDeveloperTools{"Apple's Command Line Tools are too old for Homebrew. Update them in System "
                                   "Settings, General, Software Update, then try again."};
constexpr Words kLaunchdRefused{"macOS did not accept Homebrew's login service for Colima. That mostly passes after a "
                                "restart of this Mac; then switch the start at login on again."};
constexpr Words kNotLinked{"Homebrew installed a program, but another file is where it belongs. Open 'Show details': "
                           "Homebrew names the file and the command that helps."};
constexpr Words kRoot{"Homebrew does not work for the user root. Open Corvane as an ordinary user."};
constexpr Words kUnknown{"This Homebrew does not know the program. Run \"brew update\" in Terminal, then try again."};
constexpr Words kDamaged{"A file arrived damaged. Try again; if it stays so, something between this Mac and the "
                         "internet changes what is downloaded."};
constexpr Words kInspected{"Homebrew did not trust the answer from the internet: something in between, such as a "
                           "company's proxy or a virus scanner, puts its own certificate there. Try another network or "
                           "ask whoever looks after this Mac."};
constexpr Words kRefused{"The server refused Homebrew's download. Try again later; behind a company's proxy, ask "
                         "whoever looks after it."};
constexpr Words kNoNetwork{"Homebrew could not download what it needs. Check your internet connection (and any VPN), "
                           "then try again."};

constexpr KnownFailure kFailures[] = {
    {Words("has already locked"), {}, kLocked},
    {Words("another active homebrew"), {}, kLocked},
    {Words("not writable by your user"), {}, kNotOwned, Words("sudo chown")},
    {Words("no space left on device"), {}, kDiskFull},
    {Words("permission denied @"), {}, kNotAllowed},
    {Words("command line tools are too outdated"), {}, kOldDeveloperTools},
    {Words("no developer tools installed"), {}, kNoDeveloperTools},
    {Words("no developer tools were found"), {}, kNoDeveloperTools},
    {Words("xcode alone is not sufficient"), {}, kNoDeveloperTools},
    {Words("invalid active developer path"), {}, kNoDeveloperTools},
    {Words("bootstrap failed:"), {}, kLaunchdRefused, {}, FailureReading::Remedy::StartColimaByHand},
    {Words("`brew link` step did not complete"), {}, kNotLinked},
    {Words("running homebrew as root"), {}, kRoot},
    {Words("no available formula with the name"), {}, kUnknown},
    {Words("sha-256 mismatch"), {}, kDamaged},
    {Words("sha256 mismatch"), {}, kDamaged},
    {Words("curl: (60)"), {}, kInspected},
    {Words("curl: (22)"), {}, kRefused},
    {Words("curl: ("), {}, kNoNetwork},
    {Words("could not resolve host"), {}, kNoNetwork},
    {Words("error: fetching /"), Words("failed!"), kNoNetwork},
    {Words("failed to download resource"), {}, kNoNetwork},
};

} // namespace

FailureReading ToolFailures::homebrew(const QStringList &lines)
{
    QStringList serious = lines;
    serious.removeIf([](const QString &line) { return line.startsWith(Words("Warning:")); });
    return firstKnown(kFailures, serious);
}

} // namespace corvane
