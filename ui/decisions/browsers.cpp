#include "ui/decisions/browsers.h"

#include "app/disturbance.h"
#include "app/wizard_steps.h"
#include "facts/addresses.h"

#include <QHostAddress>

#include <algorithm>

namespace corvane {

namespace {

using Way = BrowserVerdict::Way;

const Badge kWithPihole{QStringLiteral("checkmark.circle.fill"), Tint::Green, QStringLiteral("uses Pi-hole")};
const Badge kPastPihole{QStringLiteral("exclamationmark.triangle.fill"), Tint::Red, QStringLiteral("skips Pi-hole")};
const Badge kUncertain{QStringLiteral("questionmark.circle.fill"), Tint::Orange, QStringLiteral("not certain")};

QString numbered(const QStringList &steps)
{
    QStringList lines;
    for (qsizetype i = 0; i < steps.size(); ++i)
        lines << QStringLiteral("%1. %2").arg(i + 1).arg(steps.at(i));
    return lines.join(u'\n');
}

/// A server that the browsers' tables of providers cannot hold: one of the user's own network.
bool isOfOwnNetwork(const QString &server)
{
    static const QList<std::pair<QHostAddress, int>> own{QHostAddress::parseSubnet(QStringLiteral("10.0.0.0/8")),
                                                         QHostAddress::parseSubnet(QStringLiteral("172.16.0.0/12")),
                                                         QHostAddress::parseSubnet(QStringLiteral("192.168.0.0/16")),
                                                         QHostAddress::parseSubnet(QStringLiteral("fc00::/7"))};
    const QHostAddress address(server.section(u'%', 0, 0));
    const auto holds = [&](const std::pair<QHostAddress, int> &network) { return address.isInSubnet(network); };
    return address.isLoopback() || address.isLinkLocal() || std::ranges::any_of(own, holds);
}

/// A browser of Chromium's family looks every server of the Mac up in a table of providers.
BrowserVerdict verdictOnBackup(BrowserRule rule)
{
    if (rule == BrowserRule::InPlace)
        return {Way::WithPihole,
                QStringLiteral("A rule in Pi-hole keeps it from going over to the secure DNS of 1.1.1.1.")};
    if (rule == BrowserRule::Interrupted)
        return {Way::Uncertain,
                QStringLiteral("Pi-hole was silent or its blocking off for a while. If the browser was open then, it "
                               "may still ask 1.1.1.1. Quit it and open it again, or press Test.")};
    return {Way::PastPihole,
            QStringLiteral("It knows this Mac's backup server 1.1.1.1 and goes over to its secure DNS after a few "
                           "seconds, past Pi-hole. Switch secure DNS off as described above, or use Pi-hole only "
                           "(step %1).")
                .arg(stepNumber(WizardStep::DNS))};
}

BrowserVerdict verdictOfDefault(QStringList servers, BrowserRule rule)
{
    servers.removeAll(kPiholeAddress);
    if (servers.isEmpty())
        return {Way::WithPihole,
                QStringLiteral("Pi-hole is this Mac's only DNS server, so there is no other to go to.")};
    if (servers.contains(kBackupServer)) return verdictOnBackup(rule);
    if (std::ranges::all_of(servers, isOfOwnNetwork))
        return {Way::WithPihole,
                QStringLiteral("This Mac's other DNS server belongs to your own network, so the browser knows no "
                               "secure DNS of it.")};
    return {Way::Uncertain, QStringLiteral("This Mac also has the DNS server %1. The browser may go over to its secure "
                                           "DNS. Switch secure DNS off to be certain.")
                                .arg(servers.join(QStringLiteral(", ")))};
}

BrowserVerdict verdictOnFirefox(std::optional<bool> toldOff)
{
    if (!toldOff) return {};
    if (!*toldOff)
        return {Way::Uncertain, QStringLiteral("Pi-hole does not tell Firefox to leave its default secure DNS off. "
                                               "Switch it off as described above to be certain.")};
    return {Way::WithPihole, QStringLiteral("Pi-hole tells Firefox to leave its default secure DNS off, and Firefox "
                                            "does so as long as you have not switched it on yourself.")};
}

Badge badgeOf(const BrowserInfo &browser, const BrowserVerdict &verdict)
{
    switch (verdict.way) {
    case Way::WithPihole:
        return kWithPihole;
    case Way::PastPihole:
        return kPastPihole;
    case Way::Uncertain:
        return kUncertain;
    case Way::Unknown:
        break;
    }
    return browserBadge(browser.state);
}

QString proofText(const QString &name, BrowserProof proof)
{
    switch (proof) {
    case BrowserProof::Running:
        return QStringLiteral(
                   "Two made-up names are opened in %1, ten seconds apart. Error pages are expected. Looking "
                   "in Pi-hole's log...")
            .arg(name);
    case BrowserProof::AsksPihole:
        return QStringLiteral("Tested: %1 uses Pi-hole, at once and ten seconds later.").arg(name);
    case BrowserProof::CameLate:
        return QStringLiteral("Tested: %1 asked Pi-hole ten seconds later, but not at once. Test again to be certain.")
            .arg(name);
    case BrowserProof::GoesPast:
        return QStringLiteral(
                   "Tested: %1 asked Pi-hole at first, but not ten seconds later. It goes past Pi-hole. Switch "
                   "its secure DNS off.")
            .arg(name);
    case BrowserProof::NeverAsks:
        return QStringLiteral("Tested: %1 did not ask Pi-hole. It may be using its own secure DNS, a VPN or a proxy.")
            .arg(name);
    case BrowserProof::NotOpened:
        return QStringLiteral("%1 could not be opened.").arg(name);
    case BrowserProof::Unread:
        return QStringLiteral("Pi-hole's log could not be read, so nothing is known about %1.").arg(name);
    case BrowserProof::Disturbed:
        return Disturbance::kSentence;
    }
    return {};
}

QString noteOf(const BrowserInfo &browser, const BrowserVerdict &verdict, const BrowserProofs &proofs)
{
    QStringList lines;
    if (!verdict.reason.isEmpty()) lines << verdict.reason;
    if (proofs.contains(browser.id)) lines << proofText(browser.name, proofs.value(browser.id));
    return lines.join(u'\n');
}

} // namespace

BrowserVerdict browserVerdict(const BrowserInfo &browser, const BrowserSurroundings &surroundings)
{
    const bool mayAskPihole = browser.state == SecureDNSState::Off || browser.decidesItself;
    if (!browser.installed || !surroundings.report || !mayAskPihole) return {};
    if (!surroundings.report->firstIsPihole)
        return {Way::Uncertain, QStringLiteral("This Mac itself does not ask Pi-hole now (step %1), so its browsers do "
                                               "not either.")
                                    .arg(stepNumber(WizardStep::DNS))};
    if (!browser.decidesItself) return {};
    if (browser.id == QLatin1String("firefox")) return verdictOnFirefox(surroundings.firefoxToldOff);
    return verdictOfDefault(surroundings.report->defaultServers, surroundings.rule);
}

Badge browserBadge(SecureDNSState state)
{
    switch (state) {
    case SecureDNSState::On:
        return kPastPihole;
    case SecureDNSState::Off:
        return kWithPihole;
    case SecureDNSState::UnknownDefault:
    case SecureDNSState::NotReadable:
        return kUncertain;
    case SecureDNSState::NotApplicable:
        break;
    }
    return {QStringLiteral("info.circle.fill"), Tint::Blue, QStringLiteral("for your information")};
}

QList<Row> browserRows(const QList<BrowserInfo> &browsers, const BrowserSurroundings &surroundings)
{
    QList<Row> rows;
    for (const BrowserInfo &browser : browsers) {
        const BrowserVerdict verdict = browserVerdict(browser, surroundings);
        const bool nothingToDo = browser.state == SecureDNSState::Off && verdict.way != Way::PastPihole;
        const QString steps = nothingToDo ? QString() : numbered(browser.steps);
        const QString detail = steps.isEmpty() ? browser.detail : browser.detail + u'\n' + steps;
        const bool canOpen = browser.id == QLatin1String("safari") || (browser.installed && browser.settingsURL);
        rows.append({browser.id, badgeOf(browser, verdict), browser.name, detail, canOpen,
                     noteOf(browser, verdict, surroundings.proofs)});
    }
    return rows;
}

QString provedBrowsers(const QList<BrowserInfo> &browsers, const BrowserProofs &proofs)
{
    QStringList names;
    for (const BrowserInfo &browser : browsers) {
        if (proofs.contains(browser.id) && proofs.value(browser.id) == BrowserProof::AsksPihole) names << browser.name;
    }
    return names.isEmpty() ? QString() : QStringLiteral("Proved to use Pi-hole: ") + names.join(QStringLiteral(", "));
}

QString browserRuleText(BrowserRule rule, bool answering, bool blocks)
{
    static const QString mayLeave =
        QStringLiteral("Chrome, Edge and Brave may go over to the secure DNS of 1.1.1.1, past Pi-hole. ");
    static const QString avoid =
        mayLeave + QStringLiteral("'Pi-hole only' (step %1) avoids that.").arg(stepNumber(WizardStep::DNS));
    static const QString reopen = QStringLiteral("Quit a browser that was open, and open it again.");
    switch (rule) {
    case BrowserRule::InPlace:
        return QStringLiteral(
            "A rule in Pi-hole keeps Chrome, Edge and Brave from going over to the secure DNS of 1.1.1.1.");
    case BrowserRule::Interrupted:
        if (!answering)
            return QStringLiteral("While Pi-hole is silent, 1.1.1.1 answers, ads included, and ") + mayLeave +
                   QStringLiteral("They stay there when Pi-hole is back. ") + reopen;
        if (!blocks)
            return QStringLiteral("While blocking is off, ") + mayLeave +
                   QStringLiteral("They stay there when it is on again. ") + reopen;
        return QStringLiteral(
                   "Pi-hole was silent or its blocking off for a while. Chrome, Edge and Brave may have gone "
                   "over to the secure DNS of 1.1.1.1, past Pi-hole. ") +
               reopen;
    case BrowserRule::Refused:
        return QStringLiteral("Pi-hole did not take the rule that keeps browsers with it. ") + avoid;
    case BrowserRule::SwitchedOff:
        return QStringLiteral("The rule in Pi-hole that keeps browsers with it is switched off. ") + avoid;
    case BrowserRule::Overruled:
        return QStringLiteral("Pi-hole has the rule that keeps browsers with it, but answers all the same: a name that "
                              "is allowed there overrules it. ") +
               avoid;
    case BrowserRule::NotNeeded:
        break;
    }
    return {};
}

} // namespace corvane
