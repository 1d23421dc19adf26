#pragma once

#include "app/enum_set.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace corvane {

/// What Corvane can be in the middle of. A new one takes the same place here and in the table below.
enum class Activity : quint8 {
    Checks,
    DockerTest,
    PiholeTests,
    BlockingTest,
    SystemTest,
    BrowserTest,
    BrowserProof,
    LoadServices,
    ApplyDns,
    RestoreDns,
    Install,
    StartColima,
    Autostart,
    UdpFix,
    StartPihole,
    StartContainer,
    StopContainer,
    RestartContainer,
    Update,
    PortChange,
    Removal,
    ExportBackup,
    ImportBackup,
    LoadLists,
    ChangeRules,
    ScanBrowsers,
    LoadLogs,
    MakeReport,
    CheckForUpdates,
    BringBack,
    PutRight,
    Exchange,
};
using Activities = EnumSet<Activity>;
[[nodiscard]] constexpr Activities operator|(Activity one, Activity other) { return Activities(one) | other; }

/// What there is one of, so that one activity at a time may change it.
enum class Subject : quint8 {
    Engine,    ///< Colima's machine and Docker in it.
    Container, ///< Pi-hole, its files and its settings.
    Dns,       ///< This Mac's servers and the file that they are saved in.
    Rules,     ///< What Pi-hole blocks and allows; a list run replaces it as a whole.
};
using Subjects = EnumSet<Subject>;
[[nodiscard]] constexpr Subjects operator|(Subject one, Subject other) { return Subjects(one) | other; }

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
    // It points this Mac at a Pi-hole that must go on answering.
    ActivityRule{Activity::ApplyDns, "applydns", "this Mac's DNS is being changed", Subject::Dns,
                 Subject::Container | Subject::Engine},
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

[[nodiscard]] constexpr bool rulesAreInOrder()
{
    std::size_t place = 0;
    return std::ranges::all_of(kActivityRules, [&place](const ActivityRule &rule) {
        return static_cast<std::size_t>(rule.activity) == place++;
    });
}
static_assert(rulesAreInOrder(), "the table's rows have the order of the names");
static_assert(kActivityRules.size() <= Activities::kMost, "a set of activities has room for all of them");

[[nodiscard]] constexpr bool exclude(const ActivityRule &one, const ActivityRule &other)
{
    if (one.activity == other.activity) return !one.overlapsItself;
    return (one.changes & (other.changes | other.needs)) || (other.changes & one.needs);
}

[[nodiscard]] constexpr const ActivityRule &ruleOf(Activity activity)
{
    return kActivityRules.at(static_cast<std::size_t>(activity));
}

/// Whether an activity has this key in the model's `busy`.
[[nodiscard]] constexpr bool isBusyKey(std::string_view key)
{
    return !key.empty() &&
           std::ranges::any_of(kActivityRules, [key](const ActivityRule &rule) { return rule.busyKey == key; });
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

/// What changes one of these.
[[nodiscard]] constexpr Activities changing(Subjects subjects)
{
    Activities found;
    for (const ActivityRule &rule : kActivityRules) {
        if (rule.changes & subjects) found |= rule.activity;
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
