#include "runtime/failure_table.h"
#include "runtime/tool_failures.h"

namespace corvane {

namespace {

using Words = QLatin1StringView;

constexpr Words kLimit{"Docker Hub's download limit for your internet address is reached. Wait an hour or two, or sign "
                       "in with \"docker login\" in Terminal, then try again."};
constexpr Words kLeftHelper{
    "Docker asks a helper for passwords that is not on this Mac any more; Docker Desktop leaves "
    "that behind. Open the file .docker/config.json in your home folder, delete the line with "
    "\"credsStore\", then try again."};
constexpr Words kNoVersion{"Docker Hub does not have this Pi-hole version (yet). A new version arrives there some time "
                           "after it is announced; try again later."};
constexpr Words kNoArchitecture{"Docker Hub does not have this Pi-hole version for this kind of Mac (yet). Try again "
                                "later."};
constexpr Words kRefused{"Docker Hub refused the download. If you once signed in there, run \"docker logout\" in "
                         "Terminal and try again. A company's network may refuse it too."};
constexpr Words kInspected{"Docker did not trust the answer from the internet: something in between, such as a "
                           "company's proxy or a virus scanner, puts its own certificate there. Try another network or "
                           "ask whoever looks after this Mac."};
constexpr Words kOldClient{"The docker command on this Mac is too old for Colima's Docker. Run \"brew upgrade docker\" "
                           "in Terminal, then try again."};
constexpr Words kOldEngine{"Colima's Docker is too old for the docker command on this Mac. Run \"colima update\" in "
                           "Terminal, then try again."};
constexpr Words kOtherContext{"docker talks to another program than Colima; the line below names its address. Run "
                              "\"docker context use colima\" in Terminal, then try again."};
constexpr Words kContainerHolds53{"Another container in Colima holds port 53. \"docker ps\" in Terminal shows which; "
                                  "stop it, then try again."};
constexpr Words kContainerHoldsPort{"Another container in Colima holds a port that Pi-hole needs. Pick another web "
                                    "port (8081 to 8090), or stop that container; \"docker ps\" in Terminal shows it."};
constexpr Words kMachineHolds53{"Port 53 is taken inside Colima's virtual machine. Nothing on this Mac holds it, so "
                                "there is nothing to stop here. Restart Colima (\"colima restart\" in Terminal), then "
                                "try again."};
constexpr Words kMachineHoldsPort{
    "A port that Pi-hole needs is taken inside Colima's virtual machine, not on this Mac. "
    "Pick another web port (8081 to 8090)."};
constexpr Words kOldContainer{"An old container named \"pihole\" could not be removed. Restart Colima (\"colima "
                              "restart\" in Terminal), then try again."};
constexpr Words kNoName{"Docker could not reach the internet to download Pi-hole. Check your connection (and any VPN) "
                        "and try again. If this Mac uses Pi-hole only and Pi-hole is stopped, restore your old DNS "
                        "settings first."};
constexpr Words kNoInternet{"Docker could not reach the internet to download Pi-hole. Check your connection (and any "
                            "VPN) and try again."};
constexpr Words kBrokenOff{"Docker broke off in the middle of an answer; it may be starting or stopping. Wait a moment "
                           "and try again."};

constexpr KnownFailure kFailures[] = {
    {Words("toomanyrequests"), {}, kLimit},
    {Words("429 too many requests"), {}, kLimit},
    {Words("pull rate limit"), {}, kLimit},
    {Words("error getting credentials"), Words("docker-credential-"), kLeftHelper},
    {Words("is too old. minimum supported api version"), {}, kOldClient},
    {Words("is too new. maximum supported api version"), {}, kOldEngine},
    {Words("no matching manifest for"), {}, kNoArchitecture},
    {Words("x509: "), {}, kInspected},
    {Words("401 unauthorized"), {}, kRefused},
    {Words("403 forbidden"), {}, kRefused},
    {Words("pull access denied"), {}, kRefused},
    {Words("unauthorized: "), {}, kRefused},
    {Words("lookup "), Words("no such host"), kNoName},
    {Words("lookup "), Words("server misbehaving"), kNoName},
    {Words("lookup "), Words("i/o timeout"), kNoName},
    {Words("lookup "), Words("connection refused"), kNoName},
    {Words("failed to resolve reference"), Words(": not found"), kNoVersion},
    {Words("manifest unknown"), {}, kNoVersion},
    {Words("manifest for "), Words(" not found"), kNoVersion},
    {Words("docker daemon at"), Words("/.docker/run/"), kOtherContext},
    {Words("docker api at"), Words("/.docker/run/"), kOtherContext},
    {Words("docker daemon at"), Words("/.orbstack/"), kOtherContext},
    {Words("docker api at"), Words("/.orbstack/"), kOtherContext},
    {Words("docker daemon at"), Words("/.rd/"), kOtherContext},
    {Words("docker api at"), Words("/.rd/"), kOtherContext},
    {Words("docker daemon at tcp://"), {}, kOtherContext},
    {Words("docker api at tcp://"), {}, kOtherContext},
    {Words("127.0.0.1:53 failed: port is already allocated"), {}, kContainerHolds53},
    {Words("failed: port is already allocated"), {}, kContainerHoldsPort},
    {Words("address already in use"), Words("127.0.0.1:53/"), kMachineHolds53},
    {Words("address already in use"), Words("127.0.0.1:53:"), kMachineHolds53},
    {Words("address already in use"), Words("failed to bind host port"), kMachineHoldsPort},
    {Words("address already in use"), Words("listen tcp"), kMachineHoldsPort},
    {Words("the container name \"/pihole\" is already in use"), {}, kOldContainer},
    {Words("client.timeout exceeded"), {}, kNoInternet},
    {Words("connection reset by peer"), Words("https://"), kNoInternet},
    {Words("https://"), Words(": eof"), kNoInternet},
    {Words("unexpected eof"), {}, kNoInternet},
    {Words("error during connect"), Words(": eof"), kBrokenOff},
};

} // namespace

FailureReading ToolFailures::docker(const QStringList &lines) { return firstKnown(kFailures, lines); }

} // namespace corvane
