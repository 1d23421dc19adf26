#include "ui/windows.h"

#include "platform/memory.h"

#include <QEvent>
#include <QQmlComponent>
#include <QQuickItem>

namespace corvane {

namespace {

void raise(QQuickWindow &window)
{
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.setVisible(true);
    window.raise();
    window.requestActivate();
}

QVariantMap propertiesOf(const Alert &alert)
{
    return {{QStringLiteral("heading"), alert.title},
            {QStringLiteral("message"), alert.text},
            {QStringLiteral("acceptLabel"), alert.accept},
            {QStringLiteral("rejectLabel"), alert.reject},
            {QStringLiteral("warning"), alert.style == Alert::Style::Warning}};
}

} // namespace

Windows::Windows(MakeEngine makeEngine, Dialogs &dialogs, Workspace &workspace, SettingsStore &store)
    : m_makeEngine(std::move(makeEngine))
    , m_dialogs(dialogs)
    , m_workspace(workspace)
    , m_place(store)
{
    connect(&dialogs, &Dialogs::changed, this, &Windows::follow);
}

Windows::~Windows()
{
    if (m_main) m_place.keep(*m_main);
    qDeleteAll(QSet(m_living));
}

void Windows::openMain()
{
    if (prepare(m_main, QStringLiteral("MainWindow"))) m_place.restore(*m_main);
    raise(*m_main);
}

void Windows::comeForward()
{
    m_workspace.activate();
    openMain();
    // A window that was not there yet when Corvane came to the front.
    m_workspace.activate();
}

void Windows::openSettings()
{
    prepare(m_settings, QStringLiteral("SettingsWindow"));
    m_settings->contentItem()->setEnabled(!m_dialogs.panel());
    raise(*m_settings);
}

void Windows::showQuestion()
{
    if (!m_dialogs.alert() && !m_dialogs.panel()) return;
    m_workspace.activate();
    if (m_alert) raise(*m_alert);
}

// Answers whether the window had to be made.
bool Windows::prepare(Window &window, const QString &view)
{
    if (window) return false;
    window = make(view, {});
    connect(window, SIGNAL(settingsRequested()), this, SLOT(openSettingsWindow()));
    connect(window, SIGNAL(quitRequested()), this, SIGNAL(quitRequested()));
    return true;
}

QQuickWindow *Windows::make(const QString &view, const QVariantMap &properties)
{
    if (!m_engine) m_engine = m_makeEngine();
    QQmlComponent component(m_engine.get());
    component.loadUrl(QUrl(QStringLiteral("qrc:/qt/qml/Corvane/%1.qml").arg(view)));
    if (!component.isReady()) qFatal("%s", qPrintable(component.errorString()));
    auto *window = qobject_cast<QQuickWindow *>(component.createWithInitialProperties(properties));
    if (!window) qFatal("%s", qPrintable(component.errorString()));
    QQmlEngine::setObjectOwnership(window, QQmlEngine::CppOwnership);
    window->installEventFilter(this);
    m_living.insert(window);
    connect(window, &QObject::destroyed, this, [this](QObject *gone) {
        m_living.remove(gone);
        if (m_living.isEmpty()) QMetaObject::invokeMethod(this, &Windows::giveBack, Qt::QueuedConnection);
    });
    return window;
}

void Windows::follow()
{
    // Before the question or the panel is there: what comes to the front later would cover it.
    if (m_dialogs.alert() || m_dialogs.panel()) m_workspace.activate();
    // A panel belongs to the main window and holds up that one by itself.
    if (m_settings) m_settings->contentItem()->setEnabled(!m_dialogs.panel());
    if (m_dialogs.alert() == m_shown) return;
    closeAlert();
    m_shown = m_dialogs.alert();
    if (m_shown) {
        m_alert = make(QStringLiteral("AlertWindow"), propertiesOf(*m_shown));
        connect(m_alert, SIGNAL(answered(bool)), this, SLOT(onAnswered(bool)));
        raise(*m_alert);
    }
}

// Another question in the same words gets a window of its own.
void Windows::onAnswered(bool accepted)
{
    closeAlert();
    m_dialogs.answer(accepted);
}

void Windows::closeAlert()
{
    if (m_alert) m_alert->deleteLater();
    m_alert.clear();
    m_shown.reset();
}

bool Windows::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close) return false;
    if (watched == m_main) m_place.keep(*m_main);
    // The window decides first whether it closes.
    watched->event(event);
    if (!event->isAccepted()) return true;
    if (watched == m_alert) onAnswered(false);
    for (Window *window : {&m_main, &m_settings}) {
        if (watched != *window) continue;
        (*window)->deleteLater();
        window->clear();
    }
    return true;
}

void Windows::giveBack()
{
    if (!m_living.isEmpty()) return;
    m_engine.reset();
    platform::returnFreeMemory();
}

} // namespace corvane
