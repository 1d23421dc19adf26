#pragma once

#include <QColor>
#include <QObject>

#include <memory>

namespace corvane {

/// How the user wants every program to look, as the system keeps it.
class Appearance : public QObject {
    Q_OBJECT

public:
    Appearance();

    /// The colour of switches, default buttons and the like; not the one behind selected text.
    [[nodiscard]] virtual QColor accent() const = 0;
    [[nodiscard]] virtual bool reducesMotion() const = 0;
    [[nodiscard]] virtual bool increasesContrast() const = 0;

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void changed();
};

/// The wishes of this user on this system.
[[nodiscard]] std::unique_ptr<Appearance> systemAppearance();

} // namespace corvane
