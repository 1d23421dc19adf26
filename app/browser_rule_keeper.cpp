#include "app/browser_rule_keeper.h"

#include "dns/dns_configurator.h"
#include "facts/addresses.h"
#include "runtime/pihole_controller.h"

#include <algorithm>

namespace corvane {

namespace {

/// Where browsers that know 1.1.1.1 look for that provider's secure DNS.
const QString kProvider = QStringLiteral("chrome.cloudflare-dns.com");
constexpr PiholeRule::Kind kKind = PiholeRule::Kind::DeniedPattern;
const QString kExpression = QStringLiteral("^chrome\\.cloudflare-dns\\.com$;reply=NXDOMAIN");
const QString kComment =
    QStringLiteral("Corvane: keeps browsers with Pi-hole while 1.1.1.1 is this Mac's backup DNS server");
const QLatin1String kOwner("Corvane:");
constexpr std::chrono::minutes kBetweenLooks{1};
/// A new rule counts about a tenth of a second after Pi-hole took it.
constexpr std::chrono::milliseconds kBeforeItCounts{300};
constexpr int kAttempts = 3;

bool isOurs(const PiholeRule &rule) { return rule.comment.startsWith(kOwner); }

bool usesBackup(const QStringList &servers)
{
    return servers.contains(kPiholeAddress) && servers.contains(kBackupServer);
}

bool usesBackup(const std::optional<ResolverReport> &report)
{
    return report && report->firstIsPihole && usesBackup(report->defaultServers);
}

bool asksBackup(const NetworkService &service) { return usesBackup(service.servers); }

bool allKnown(const QList<NetworkService> &services)
{
    return !services.isEmpty() && std::ranges::all_of(services, &NetworkService::serversKnown);
}

} // namespace

BrowserRuleKeeper::BrowserRuleKeeper(PiholeAPI &api, Clock &clock)
    : m_api(api)
    , m_clock(clock)
{}

void BrowserRuleKeeper::become(BrowserRule state)
{
    if (state == m_state) return;
    m_state = state;
    Q_EMIT changed();
}

Flow<> BrowserRuleKeeper::keep(std::optional<ResolverReport> report)
{
    if (!usesBackup(report)) {
        become(BrowserRule::NotNeeded);
        if (m_mayLinger) co_await drop();
        co_return;
    }
    if (m_state != BrowserRule::NotNeeded && m_clock.now() < m_nextLook) co_return;
    co_await put(Proof::Ask);
}

Flow<> BrowserRuleKeeper::put(Proof proof)
{
    m_mayLinger = true;
    m_nextLook = m_clock.now() + kBetweenLooks;
    const int wish = ++m_newestWish;
    const bool proven = m_state == BrowserRule::InPlace || m_state == BrowserRule::Interrupted;
    BrowserRule found = co_await findOrAdd();
    if (wish != m_newestWish) co_return;
    if (found == BrowserRule::InPlace && proof == Proof::Ask && !proven) {
        const bool holds = co_await works();
        if (wish != m_newestWish) co_return;
        if (!holds) found = BrowserRule::Overruled;
    }
    // That it is there again brings no browser back.
    const bool interrupted = found == BrowserRule::InPlace && m_state == BrowserRule::Interrupted;
    if (!interrupted) become(found);
}

Flow<BrowserRule> BrowserRuleKeeper::findOrAdd()
{
    const auto found = co_await m_api.rule(kKind, kExpression);
    if (!found) co_return BrowserRule::Refused;
    if (*found) co_return (*found)->enabled ? BrowserRule::InPlace : BrowserRule::SwitchedOff;
    const PiholeRule rule{.kind = kKind, .domain = kExpression, .comment = kComment};
    const auto added = co_await m_api.addRule(rule);
    co_return added ? BrowserRule::InPlace : BrowserRule::Refused;
}

/// Whether Pi-hole answers that the provider does not exist; where the user allows the name it does not.
Flow<bool> BrowserRuleKeeper::works()
{
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        co_await m_clock.pause(kBeforeItCounts);
        const DigResult reply = co_await PiholeController::ask(kProvider);
        if (reply.status == QLatin1String("NXDOMAIN")) co_return true;
    }
    co_return false;
}

Flow<> BrowserRuleKeeper::drop()
{
    const int wish = ++m_newestWish;
    // Until a look finds none: what is removed during a list run comes back.
    m_mayLinger = true;
    const auto found = co_await m_api.rule(kKind, kExpression);
    if (!found || wish != m_newestWish) co_return;
    if (!*found || !isOurs(**found)) {
        m_mayLinger = false;
        co_return;
    }
    const QList<NetworkService> services = co_await DNSConfigurator::listServices();
    if (wish != m_newestWish || !allKnown(services)) co_return;
    m_mayLinger = !std::ranges::any_of(services, asksBackup);
    if (!m_mayLinger) co_return;
    become(BrowserRule::NotNeeded);
    [[maybe_unused]] const auto removed = co_await m_api.removeRule(kKind, kExpression);
}

void BrowserRuleKeeper::interrupt()
{
    if (m_state == BrowserRule::InPlace) become(BrowserRule::Interrupted);
}

void BrowserRuleKeeper::proved()
{
    if (m_state == BrowserRule::Interrupted) become(BrowserRule::InPlace);
}

void BrowserRuleKeeper::lookAgain()
{
    m_mayLinger = true;
    m_nextLook = {};
}

} // namespace corvane
