#pragma once

#include "app/app_model.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Counts a pause of blocking down, second by second, for as long as somebody looks. What is left comes from Pi-hole,
/// which is asked again every few seconds and when it should be over: its timer may stop, and others may set it.
class PauseCountdown : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(corvane::AppModel *app READ app WRITE setApp NOTIFY appChanged)
    Q_PROPERTY(bool looked READ looked WRITE setLooked NOTIFY lookedChanged)
    /// "4:59"; empty while no pause with an end is under way.
    Q_PROPERTY(QString left READ left NOTIFY leftChanged)
    Q_PROPERTY(QString spoken READ spoken NOTIFY leftChanged)

public:
    explicit PauseCountdown(QObject *parent = nullptr);

    [[nodiscard]] AppModel *app() const { return m_app; }
    void setApp(AppModel *app);
    [[nodiscard]] bool looked() const { return m_looked; }
    void setLooked(bool looked);
    [[nodiscard]] QString left() const { return m_left; }
    [[nodiscard]] QString spoken() const { return m_spoken; }
    /// Whether it counts; nothing does while nobody looks.
    [[nodiscard]] bool ticks() const { return m_tick.isActive(); }

Q_SIGNALS:
    void appChanged();
    void lookedChanged();
    void leftChanged();

private:
    void onReading();
    void tick();
    void show();
    void follow();
    [[nodiscard]] bool paused() const;
    [[nodiscard]] double secondsLeft() const;

    QPointer<AppModel> m_app;
    bool m_looked = false;
    QElapsedTimer m_sinceReading;
    QTimer m_tick;
    int m_ticks = 0;
    QString m_left;
    QString m_spoken;
};

} // namespace corvane
