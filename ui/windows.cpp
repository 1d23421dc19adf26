#include "ui/windows.h"

#include "platform/memory.h"

#include <QEvent>
#include <QQmlComponent>

namespace corvane {

namespace {

void raise(QQuickWindow &window)
{
    if (window.windowStates().testFlag(Qt::WindowMinimized)) window.showNormal();
    window.show();
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

Windows::Windows(MakeEngine makeEngine, Dialogs &dialogs)
    : m_makeEngine(std::move(makeEngine))
    , m_dialogs(dialogs)
{
    connect(&dialogs, &Dialogs::changed, this, &Windows::follow);
}

Windows::~Windows() { qDeleteAll(QSet(m_living)); }

void Windows::openMain() { open(m_main, QStringLiteral("MainWindow")); }

void Windows::openSettings() { open(m_settings, QStringLiteral("SettingsWindow")); }

void Windows::open(Window &window, const QString &view)
{
    if (!window) {
        window = make(view, {});
        connect(window, SIGNAL(settingsRequested()), this, SLOT(openSettingsWindow()));
        connect(window, SIGNAL(quitRequested()), this, SIGNAL(quitRequested()));
    }
    raise(*window);
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
    if (m_dialogs.alert() == m_shown) return;
    m_shown = m_dialogs.alert();
    if (m_alert) m_alert->deleteLater();
    m_alert.clear();
    if (m_shown) {
        m_alert = make(QStringLiteral("AlertWindow"), propertiesOf(*m_shown));
        connect(m_alert, SIGNAL(answered(bool)), this, SLOT(onAnswered(bool)));
        raise(*m_alert);
    }
}

bool Windows::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close) return false;
    if (watched == m_alert) {
        m_dialogs.answer(false);
        return false;
    }
    for (Window *window : {&m_main, &m_settings}) {
        if (watched != *window) continue;
        (*window)->deleteLater();
        window->clear();
    }
    return false;
}

void Windows::giveBack()
{
    if (!m_living.isEmpty()) return;
    m_engine.reset();
    platform::returnFreeMemory();
}

} // namespace corvane
