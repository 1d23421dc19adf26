#include "app/app_state.h"

#include "app/status_note.h"
#include "facts/addresses.h"

namespace corvane {

namespace {

QString detourIn(const std::optional<ResolverReport> &report) { return report ? report->detour : QString(); }

} // namespace

AppState::AppState(SettingsStore &settings, const LoginItem &loginItem)
    : m_settings(settings)
{
    const PersistedSettings stored = PersistedSettings::load(m_settings);
    m_webPort = stored.webPort;
    m_pinnedTag = stored.pinnedTag;
    m_autostartColima = stored.autostartColima;
    m_wizardFinished = stored.wizardFinished;
    m_browserReadAllowed = stored.browserReadAllowed;
    m_showWizard = !stored.wizardFinished;
    m_launchAtLogin = loginItem.status() == LoginItem::Status::Enabled;
    bindDerivedFields();
}

void AppState::bindDerivedFields()
{
    m_icon.setBinding([this] { return menuIcon(m_statusChecked, m_answering, m_usedByMac); });
    m_statusLine.setBinding([this] { return corvane::statusLine(m_icon, m_containerState); });
    m_showDeadDNSBanner.setBinding(
        [this] { return m_statusChecked && m_usedByMac && !m_answering && !m_bannerDismissed; });
    m_setupSucceeded.setBinding([this] {
        return passed(m_outcomes, QStringLiteral("pihole")) && passed(m_outcomes, QStringLiteral("system"));
    });
    m_dashboardURL.setBinding(
        [this] { return QUrl(QStringLiteral("http://%1:%2/admin").arg(kPiholeAddress).arg(m_webPort.value())); });
    m_statusNote.setBinding([this] {
        return corvane::statusNote({.starting = m_starting,
                                    .checked = m_statusChecked,
                                    .container = m_containerState,
                                    .engineProblem = m_engineProblem,
                                    .trouble = m_dnsTrouble,
                                    .summary = m_summary,
                                    .blocking = m_blocking,
                                    .detour = detourIn(m_resolverReport),
                                    .listsDamaged = m_listsDamaged});
    });
    m_listsEmpty.setBinding([this] { return m_listsDamaged || hasNoLists(m_summary); });
}

} // namespace corvane
