#include "app/app_model.h"
#include "app/disturbance.h"
#include "app/file_work.h"
#include "app/test_name.h"
#include "app/wizard_steps.h"
#include "dns/dns_configurator.h"
#include "dns/dns_detour.h"

#include <algorithm>

namespace corvane {

namespace {

const QString kSystem = QStringLiteral("system");
constexpr int kTestLookups = 3;
constexpr int kLogReads = 3;
constexpr int kLogLength = 300;
constexpr std::chrono::milliseconds kBeforeLogRead{1500};
const QString kNoAnswer =
    QStringLiteral("Pi-hole is not answering yet, so the Mac's DNS was not changed. Finish step %1 first.")
        .arg(stepNumber(WizardStep::Pihole));

QStringList namesOf(const QList<NetworkService> &services)
{
    QStringList names;
    for (const NetworkService &service : services)
        names.append(service.name);
    return names;
}

Alert changeQuestion(const QList<NetworkService> &chosen, bool piholeOnly)
{
    const QString target = piholeOnly ? QStringLiteral("127.0.0.1 only") : QStringLiteral("127.0.0.1, then 1.1.1.1");
    QStringList lines;
    for (const NetworkService &service : chosen) {
        lines.append(QStringLiteral("• ") + service.name + QStringLiteral(": ") + serversText(service.servers) +
                     QStringLiteral("  ->  ") + target);
    }
    lines << QString()
          << QStringLiteral("Your old values are saved first in dns-backup.json (Application Support/Corvane). "
                            "The DNS cache is flushed. macOS will ask for your administrator password once.");
    if (piholeOnly) {
        lines << QString()
              << QStringLiteral("Pi-hole only: if Pi-hole stops, this Mac has no DNS until you restore your "
                                "old settings.");
    }
    Alert alert;
    alert.title = QStringLiteral("Change DNS on %1 network service(s)?").arg(chosen.size());
    alert.text = lines.join(u'\n');
    alert.accept = QStringLiteral("Change DNS");
    alert.reject = QStringLiteral("Cancel");
    return alert;
}

Alert restoreQuestion(bool hasBackup)
{
    Alert alert;
    alert.title = QStringLiteral("Restore my old DNS settings?");
    alert.text =
        hasBackup ? QStringLiteral("The DNS servers saved before the wizard changed them will be put back. macOS will "
                                   "ask for your administrator password.")
                  : QStringLiteral("No saved settings were found. Network services that point at Pi-hole will be set "
                                   "back to Automatic. macOS will ask for your administrator password.");
    alert.accept = QStringLiteral("Restore");
    alert.reject = QStringLiteral("Cancel");
    return alert;
}

} // namespace

Flow<> AppModel::loadServices()
{
    const ActivityMark mark(m_activities, Activity::LoadServices);
    co_await boundTo(mark);
    const QList<NetworkService> found = co_await DNSConfigurator::listServices();
    setServices(found);

    const QStringList names = namesOf(found);
    QSet<QString> selected = selectedServices();
    selected.intersect(QSet<QString>(names.begin(), names.end()));
    if (selected.isEmpty()) {
        for (const NetworkService &service : found) {
            if (service.isDefaultRoute) selected.insert(service.name);
        }
    }
    setSelectedServices(selected);
}

Flow<> AppModel::applyDNS()
{
    if (!mayBegin(Activity::ApplyDns, &AppModel::setDnsMessage)) co_return;
    ActivityMark mark(m_activities, Activity::ApplyDns, ActivityMark::Begin::WhenAgreed);
    co_await boundTo(mark);
    setDnsPlace(Place::SetUp);
    setDnsMessage({});
    if (!answering()) {
        setDnsMessage(kNoAnswer);
        co_return;
    }
    QList<NetworkService> chosen = services();
    erase_if(chosen, [this](const NetworkService &service) { return !selectedServices().contains(service.name); });
    if (chosen.isEmpty()) {
        setDnsMessage(QStringLiteral("Pick at least one network service."));
        co_return;
    }
    const bool onlyPihole = piholeOnly();
    chosen = co_await DNSConfigurator::readAfresh(chosen);
    const Alert question = changeQuestion(chosen, onlyPihole);
    const bool accepted = co_await m_dialogs.confirm(question);
    if (!accepted) co_return;

    mark.agreed();
    setNotice({});
    // Both may be otherwise since the question was put.
    const bool answers = co_await answersNow();
    if (!answers) {
        setDnsMessage(kNoAnswer);
        co_return;
    }
    const auto saved = co_await saveDnsBackup(chosen);
    co_await showRestoreScript();
    if (!saved) {
        setDnsMessage(QStringLiteral("The old settings could not be saved, so nothing was changed: ") + saved.error());
        co_return;
    }
    if (!onlyPihole) co_await putBrowserRule();
    const std::optional<QString> failure = co_await DNSConfigurator::apply(namesOf(chosen), onlyPihole);
    setDnsMessage(failure.value_or(QStringLiteral("DNS changed.")));
    co_await loadServices();
    if (failure || onlyPihole) co_await dropBrowserRule();
    if (failure) co_return;
    co_await proveLookups();
}

Flow<> AppModel::runSystemTest()
{
    if (m_activities.mayBegin(Activity::SystemTest)) co_await proveLookups();
}

/// A test that began earlier runs out, but what it finds does not count any more.
Flow<> AppModel::proveLookups()
{
    const ActivityMark mark(m_activities, Activity::SystemTest);
    co_await boundTo(mark);
    configureAPI();
    const Disturbance disturbance(m_activities);
    const ResolverReport report = co_await DNSConfigurator::resolverReport();
    setResolverReport(report);

    QStringList names;
    for (int i = 0; i < kTestLookups; ++i) {
        names.append(freshTestName());
        co_await DNSConfigurator::systemResolve(names.last());
    }
    QSet<QString> found;
    const QString unread = co_await findInLog(names, &found);

    QString detail = QStringLiteral("%1 of %2 test lookups through the system resolver showed up in Pi-hole's log.")
                         .arg(found.size())
                         .arg(kTestLookups);
    if (!unread.isEmpty()) detail += QStringLiteral(" (Could not read the log: ") + unread + u')';
    if (!report.firstIsPihole) detail += QStringLiteral(" The first DNS server macOS uses is not Pi-hole.");
    if (found.isEmpty() && disturbance.happened()) {
        setSystemTestDetail(Disturbance::kSentence);
        setNote(kSystem, {});
        co_await refreshStatus(Stats::Leave);
        co_return;
    }
    setSystemTestDetail(detail);
    recordOutcome(kSystem, !found.isEmpty() && report.firstIsPihole, detail);
    if (setupSucceeded()) setWizardFinished(true);
    co_await explainMissingNames(&mark, kSystem, unread.isEmpty() && found.size() < kTestLookups);
    const bool listedFirst = report.firstIsPihole && unread.isEmpty() && found.isEmpty();
    if (listedFirst && notes().value(kSystem).toString().isEmpty()) setNote(kSystem, hiddenDnsDetour());
    co_await refreshStatus(Stats::Leave);
}

/// Looks for the names in Pi-hole's query log until all are there, a read fails, or three reads were made. Answers why
/// a read failed, or nothing. `found` belongs to the flow that waits.
Flow<QString> AppModel::findInLog(QStringList names, QSet<QString> *found)
{
    for (int read = 0; read < kLogReads && found->size() < names.size(); ++read) {
        co_await m_clock.pause(kBeforeLogRead);
        const auto queries = co_await m_api.recentQueries(kLogLength);
        if (!queries) co_return queries.error().description();
        const QSet<QString> before = *found;
        for (const PiholeQuery &query : *queries) {
            if (!names.contains(query.domain) || before.contains(query.domain)) continue;
            found->insert(query.domain);
            m_day.countOwn();
        }
    }
    co_return {};
}

Flow<> AppModel::showRestoreScript()
{
    const QString path = co_await keepRestoreScript();
    setRestoreScript(path);
}

Flow<> AppModel::restoreOldSettings(Place::Name from)
{
    if (!mayBegin(Activity::RestoreDns, &AppModel::setDnsMessage)) co_return;
    ActivityMark mark(m_activities, Activity::RestoreDns, ActivityMark::Begin::WhenAgreed);
    co_await boundTo(mark);
    const Alert question = restoreQuestion(DNSConfigurator::hasBackup());
    const bool accepted = co_await m_dialogs.confirm(question);
    if (!accepted) co_return;

    mark.agreed();
    m_activities.outdate(Activity::SystemTest);
    setDnsPlace(from);
    setDnsMessage({});
    setNotice({});
    const DNSRestore restored = co_await DNSConfigurator::restore();
    setDnsMessage(restored.failure.value_or(restored.remark));
    if (!restored.failure) {
        m_activities.outdate(Activity::SystemTest);
        setNotice(kRestored);
        setSystemTestDetail({});
        setNote(kSystem, {});
        Outcomes results = outcomes();
        results.remove(kSystem);
        setOutcomes(results);
    }
    co_await loadServices();
    if (!restored.failure) co_await dropBrowserRule();
    co_await refreshStatus(Stats::Leave); // the dot follows at once
}

bool AppModel::restoresOldSettings() const
{
    // What is in its own way is no obstacle that is told.
    const bool mayBegin = m_activities.mayBegin(Activity::RestoreDns);
    return !mayBegin && m_activities.obstacle(Activity::RestoreDns).isEmpty();
}

} // namespace corvane
