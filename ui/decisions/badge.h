#pragma once

#include <QObject>
#include <QString>

namespace corvane {

/// The colours that carry a meaning on the screens; the theme knows what each looks like.
class Tint : public QObject {
    Q_OBJECT

public:
    enum Name { Plain, Secondary, Accent, Green, Orange, Red, Blue, Gray };
    Q_ENUM(Name)
};

/// A small picture with a meaning: which symbol, in which colour, and what a screen reader says for it.
class Badge {
    Q_GADGET
    Q_PROPERTY(QString symbol MEMBER symbol CONSTANT)
    Q_PROPERTY(corvane::Tint::Name tint MEMBER tint CONSTANT)
    Q_PROPERTY(QString spoken MEMBER spoken CONSTANT)
    Q_PROPERTY(bool spins READ spins CONSTANT)

public:
    /// Empty while work is under way: a spinning indicator is in its place.
    QString symbol;
    Tint::Name tint = Tint::Secondary;
    QString spoken;

    [[nodiscard]] bool spins() const { return symbol.isEmpty(); }

    bool operator==(const Badge &) const = default;
};

} // namespace corvane
