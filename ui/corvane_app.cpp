#include "ui/corvane_app.h"

#include "app/flow.h"
#include "platform/attention.h"
#include "ui/dot.h"
#include "ui/fonts.h"

#include <QApplication>

namespace corvane {

namespace {

const QUrl kReleaseFeed(QStringLiteral("https://api.github.com/repos/pi-hole/docker-pi-hole/releases/latest"));
/// What was begun can be put back within it: a tool has two seconds to end, and then two files are written.
constexpr std::chrono::seconds kLimitOfEnding{5};
const QUrl kHomepage(QStringLiteral("https://github.com/corvane/corvane"));

} // namespace

CorvaneApp::CorvaneApp()
    : m_settings(systemSettingsStore())
    , m_workspace(systemWorkspace())
    , m_loginItem(systemLoginItem())
    , m_appearance(systemAppearance())
    , m_announcer(systemAnnouncer())
    , m_model(surroundings())
    , m_looks(m_model, *m_appearance)
    , m_commands(m_model, *m_workspace)
    , m_announcements(m_model, m_dialogs, m_commands, *m_announcer)
    , m_windows([this] { return std::make_unique<ScreenEngine>(m_model, m_looks, m_commands); }, m_dialogs,
                *m_workspace, *m_settings)
    , m_filePanels(m_dialogs, m_windows)
    , m_menu(m_model, m_looks, m_commands, {[this] { m_windows.comeForward(); }, [this] { quit(); }})
    , m_receiver(m_model, [this] { m_windows.comeForward(); })
{
    QApplication::setFont(uiFont());
    QApplication::setQuitOnLastWindowClosed(false);
    connect(&m_windows, &Windows::quitRequested, this, &CorvaneApp::quit);
    connect(&m_model, &AppModel::iconChanged, this, &CorvaneApp::showIcon);
    connect(&m_model, &AppModel::statusLineChanged, this, &CorvaneApp::showIcon);
}

CorvaneApp::~CorvaneApp() = default;

Surroundings CorvaneApp::surroundings()
{
    return {*m_settings, m_dialogs, *m_workspace, *m_loginItem, m_clock, kReleaseFeed};
}

void CorvaneApp::start()
{
    m_statusItem = systemStatusItem();
    m_statusItem->setMenu(&m_menu);
    showIcon();
    m_applicationMenu =
        systemApplicationMenu({[this] { m_windows.comeForward(); }, [this] { openSettings(); }, [this] { quit(); },
                               [this] { endWithSession(); }, [this] { m_workspace->open(kHomepage); }});
    m_wakeSignals = systemWakeSignals();
    connect(m_wakeSignals.get(), &WakeSignals::woke, this, [this] { launch(m_model.refreshStatus(Stats::Include)); });
    m_watching = platform::keepWatching();
    m_windows.openMain();
    // Without it Corvane works on; a caller then learns that it does not answer.
    m_receiver.open();
    launch(m_model.bootstrap());
}

void CorvaneApp::openSettings()
{
    m_windows.openSettings();
    m_workspace->activate();
}

void CorvaneApp::showIcon()
{
    if (!m_statusItem) return;
    m_statusItem->setPicture([icon = m_model.icon()](double scale) { return dot(icon, scale); });
    m_statusItem->setSpokenName(QStringLiteral("Corvane: ") + m_model.statusLine());
}

QImage CorvaneApp::dot(MenuIcon icon, double scale) { return corvane::dot(icon, scale); }

void CorvaneApp::quit()
{
    // The question whether to quit waits for its turn.
    m_windows.showQuestion();
    if (!m_asksToQuit) launch(askAndQuit());
}

Flow<> CorvaneApp::askAndQuit()
{
    if (m_model.operationRunning() || (m_model.underWay() & notToBeCutOff())) {
        Alert alert;
        alert.title = QStringLiteral("Quit while Corvane is still working?");
        alert.text = QStringLiteral("The step under way is stopped where it is. You can run it again later.");
        alert.accept = QStringLiteral("Quit");
        alert.reject = QStringLiteral("Cancel");
        alert.style = Alert::Style::Warning;
        m_asksToQuit = true;
        const bool agreed = co_await m_dialogs.confirm(alert);
        m_asksToQuit = false;
        if (!agreed) co_return;
    }
    m_asksToQuit = true; // there is nothing more to ask
    co_await m_model.windDown(kLimitOfEnding);
    leave();
}

void CorvaneApp::endWithSession()
{
    // What is cut off is put right at the next start.
    m_model.stopEverything();
    leave();
}

void CorvaneApp::leave()
{
    // Not quit(): on a Mac that asks the system, which asks Corvane again.
    QCoreApplication::exit();
}

} // namespace corvane
