#include "platform/announcer.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QGuiApplication>
#include <QWindow>

#include <deque>

namespace corvane {

namespace {

QWindow *anyWindow()
{
    if (QWindow *window = QGuiApplication::focusWindow()) return window;
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return windows.isEmpty() ? nullptr : windows.first();
}

/// An alert that is nowhere in its window: it is announced when it comes, and its reader does not meet it.
class SpokenAlert final : public QAccessibleObject {
public:
    SpokenAlert(QObject *self, const QString &sentence)
        : QAccessibleObject(self)
        , m_sentence(sentence)
    {}

    [[nodiscard]] QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(anyWindow());
    }
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::AlertMessage; }
    [[nodiscard]] QAccessible::State state() const override { return {}; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? m_sentence : QString();
    }

private:
    QString m_sentence;
};

/// Screen readers of this desktop read an alert when it is shown; the toolkit's own event for alerts goes nowhere here.
class LinuxAnnouncer final : public Announcer {
public:
    ~LinuxAnnouncer() override
    {
        while (!m_alerts.empty())
            forgetOldest();
    }

    void announce(const QString &sentence) override
    {
        if (!QAccessible::isActive() || !anyWindow()) return;
        auto self = std::make_unique<QObject>();
        QAccessibleInterface *alert = new SpokenAlert(self.get(), sentence);
        m_alerts.push_back({std::move(self), QAccessible::registerAccessibleInterface(alert)});
        QAccessibleEvent shown(alert, QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&shown);
        if (m_alerts.size() > kKept) forgetOldest();
    }

private:
    /// What was said last can still be asked for.
    static constexpr std::size_t kKept = 8;

    struct Said {
        std::unique_ptr<QObject> self;
        QAccessible::Id id;
    };

    void forgetOldest()
    {
        QAccessible::deleteAccessibleInterface(m_alerts.front().id);
        m_alerts.pop_front();
    }

    std::deque<Said> m_alerts;
};

} // namespace

std::unique_ptr<Announcer> systemAnnouncer() { return std::make_unique<LinuxAnnouncer>(); }

} // namespace corvane
