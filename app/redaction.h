#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace corvane {

/// Takes out of a text what names a person, a network or a site, and every secret: by rules, and by the words that are
/// known to be such.
class Redaction {
public:
    /// The words that are taken out, by what they are.
    struct Known {
        QStringList passwords = {};
        QStringList networks = {};
        QStringList people = {};
        QStringList machines = {};
        QString home = {};
    };

    /// What a person is called: the whole name, and its parts, but for those that every other word may hold.
    [[nodiscard]] static QStringList namesIn(const QString &fullName);
    /// What a machine is called: with its domain and without.
    [[nodiscard]] static QStringList namesOfMachine(const QString &host);

    explicit Redaction(const Known &known);

    [[nodiscard]] QString of(QString text) const;

private:
    struct Word {
        QRegularExpression pattern;
        QString instead;
    };

    enum class Where {
        Anywhere,
        AsWord, ///< Only where no letter or digit is beside it.
    };

    void add(const QStringList &words, const QString &instead, Where where);

    QList<Word> m_words;
};

} // namespace corvane
