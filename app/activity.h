#pragma once

#include <QFlags>

#include <array>

namespace corvane {

/// What Corvane can be in the middle of.
enum class Activity : quint32 {
    Checks = 1U << 0,
    DockerTest = 1U << 1,
    PiholeTests = 1U << 2,
    BlockingTest = 1U << 3,
    SystemTest = 1U << 4,
    BrowserTest = 1U << 5,
    LoadServices = 1U << 6,
    ApplyDns = 1U << 7,
    RestoreDns = 1U << 8,
    Install = 1U << 9,
    StartColima = 1U << 10,
    Autostart = 1U << 11,
    UdpFix = 1U << 12,
    StartPihole = 1U << 13,
    StartContainer = 1U << 14,
    StopContainer = 1U << 15,
    RestartContainer = 1U << 16,
    Update = 1U << 17,
    PortChange = 1U << 18,
    Removal = 1U << 19,
    ExportBackup = 1U << 20,
    ImportBackup = 1U << 21,
    ScanBrowsers = 1U << 22,
    LoadLogs = 1U << 23,
    CheckForUpdates = 1U << 24,
    BringBack = 1U << 25,
    LoadLists = 1U << 26,
    BrowserProof = 1U << 27,
    PutRight = 1U << 28,
    Exchange = 1U << 29,
    ChangeRules = 1U << 30,
    MakeReport = 1U << 31,
};
Q_DECLARE_FLAGS(Activities, Activity)
Q_DECLARE_OPERATORS_FOR_FLAGS(Activities)

/// What there is one of, so that one activity at a time may change it.
enum class Subject : quint8 {
    Engine = 1U << 0,    ///< Colima's machine and Docker in it.
    Container = 1U << 1, ///< Pi-hole, its files and its settings.
    Dns = 1U << 2,       ///< This Mac's servers and the file that they are saved in.
    Rules = 1U << 3,     ///< What Pi-hole blocks and allows; a list run replaces it as a whole.
};
Q_DECLARE_FLAGS(Subjects, Subject)
Q_DECLARE_OPERATORS_FOR_FLAGS(Subjects)

/// What is to be known about an activity.
struct ActivityRule {
    Activity activity;
    /// The key in the model's `busy`; none when empty.
    const char *busyKey;
    /// What is being done, for a sentence.
    const char *words;
    Subjects changes = {};
    /// What nobody may change meanwhile.
    Subjects needs = {};
    /// A second one may begin while the first has not ended.
    bool overlapsItself = false;
};

/// Two activities exclude each other when one changes what the other changes or needs; an activity excludes itself.
inline constexpr std::array kActivityRules{
    ActivityRule{Activity::Checks, "checks", "this Mac is being checked"},
    ActivityRule{Activity::DockerTest, "docker", "Docker is being tested"},
    ActivityRule{Activity::PiholeTests, "pihole", "Pi-hole is being tested", {}, {}, true},
    ActivityRule{Activity::BlockingTest, "blocking", "blocking is being tested"},
    ActivityRule{Activity::SystemTest, "system", "this Mac's lookups are being tested"},
    ActivityRule{Activity::BrowserTest, "browser", "the browser is being tested"},
    ActivityRule{Activity::BrowserProof, "browserproof", "a browser is being tested"},
    ActivityRule{Activity::LoadServices, "services", "the network services are being read", {}, {}, true},
    ActivityRule{Activity::ApplyDns, "applydns", "this Mac's DNS is being changed", Subject::Dns},
    ActivityRule{Activity::RestoreDns, "restoredns", "the old DNS settings are being restored", Subject::Dns},
    ActivityRule{Activity::Install, "", "Colima and Docker are being installed", Subject::Engine},
    ActivityRule{Activity::StartColima, "", "Colima is being started", Subject::Engine},
    ActivityRule{Activity::Autostart, "", "Colima's start at login is being changed", Subject::Engine},
    ActivityRule{Activity::UdpFix, "", "Colima is being restarted", Subject::Engine},
    ActivityRule{Activity::StartPihole, "", "Pi-hole is being started", Subject::Container, Subject::Engine},
    ActivityRule{Activity::StartContainer, "container", "Pi-hole is being started",
                 Subject::Engine | Subject::Container},
    ActivityRule{Activity::StopContainer, "container", "Pi-hole is being stopped", Subject::Container, Subject::Engine},
    ActivityRule{Activity::RestartContainer, "container", "Pi-hole is being restarted", Subject::Container,
                 Subject::Engine},
    ActivityRule{Activity::Update, "", "Pi-hole is being updated", Subject::Container, Subject::Engine},
    ActivityRule{Activity::PortChange, "", "the web port is being changed", Subject::Container, Subject::Engine},
    ActivityRule{Activity::Removal, "restoredns", "Pi-hole is being removed", Subject::Container | Subject::Dns,
                 Subject::Engine},
    ActivityRule{Activity::ExportBackup, "", "a backup is being saved", {}, Subject::Container},
    ActivityRule{Activity::ImportBackup, "", "a backup is being restored", Subject::Container, Subject::Engine},
    ActivityRule{Activity::LoadLists, "lists", "the block lists are being loaded", Subject::Rules,
                 Subject::Container | Subject::Engine},
    ActivityRule{Activity::ChangeRules, "rules", "a permission is being changed", Subject::Rules, Subject::Container},
    ActivityRule{Activity::ScanBrowsers, "browsers", "the browsers are being looked at"},
    ActivityRule{Activity::LoadLogs, "logs", "the log is being read"},
    ActivityRule{Activity::MakeReport, "report", "a report is being made"},
    ActivityRule{Activity::CheckForUpdates, "updates", "a newer version is being looked for"},
    ActivityRule{Activity::BringBack, "", "the old version is being brought back", Subject::Container, Subject::Engine},
    ActivityRule{Activity::PutRight, "", "what was cut off is being put right", Subject::Container, Subject::Engine},
    // A part of others: pin, port, files and container change one after another.
    ActivityRule{Activity::Exchange, "", "the container is being exchanged", {}, {}, true},
};

[[nodiscard]] constexpr bool exclude(const ActivityRule &one, const ActivityRule &other)
{
    if (one.activity == other.activity) return !one.overlapsItself;
    return (one.changes & (other.changes | other.needs)) || (other.changes & one.needs);
}

[[nodiscard]] constexpr const ActivityRule &ruleOf(Activity activity)
{
    for (const ActivityRule &rule : kActivityRules) {
        if (rule.activity == activity) return rule;
    }
    return kActivityRules.front(); // not reached: the table holds every activity
}

/// What may not be under way when the activity begins.
[[nodiscard]] constexpr Activities excludedBy(Activity activity)
{
    Activities found;
    for (const ActivityRule &rule : kActivityRules) {
        if (exclude(ruleOf(activity), rule)) found |= rule.activity;
    }
    return found;
}

/// What leaves something half done, or loses something, when it is cut off.
[[nodiscard]] constexpr Activities notToBeCutOff()
{
    Activities found;
    for (const ActivityRule &rule : kActivityRules) {
        if (rule.changes || rule.needs) found |= rule.activity;
    }
    return found;
}

} // namespace corvane
