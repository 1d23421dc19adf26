#pragma once

#include "tests/faults/scene.h"

#include <QSet>
#include <QTimer>

namespace corvane::test {

/// Plays a scene with commands that go wrong, and sees what the user is left with.
class Sweep : public FlowTest {
protected:
    Sweep();

    /// A Mac at the scene's beginning, which had servers of its own before Corvane came.
    void begin(const Scene &scene);

    /// Every call of every tool in a run without mishaps.
    [[nodiscard]] QList<Mishap> callsOf(const Scene &scene);

    /// The scene with these mishaps.
    void endure(const Scene &scene, const QList<Mishap> &mishaps);

    [[nodiscard]] static QStringList serversNow();
    /// When DNS was first changed, by the Mac's own record; never: 0.
    [[nodiscard]] static double firstChange();

    int m_endured = 0;
    int m_triedAgain = 0;
    bool m_comesAndGoes = false;
    /// Whether Corvane looks at the Mac between a mishap and the action.
    bool m_looksFirst = false;

private:
    /// What is on the screen, for whoever reads the failure of a test.
    [[nodiscard]] QString seen();

    /// What went wrong is over: the same action comes to where it comes when nothing goes wrong.
    void expectAnotherTryToWork(const Scene &scene);

    /// What the user presses before another try: Start, or the step of the set-up that Start names; "Reload list" of
    /// an empty list, or of one without what they had ticked.
    void undoTheDamage(const Scene &scene);

    /// DNS was never changed without the old servers on disk. Servers that could not be read count as none, and the
    /// question says so; what it says is what is saved.
    void expectBackupBeforeChange();

    /// Whatever went wrong, the old servers can be had back once it is over.
    void expectWayBack();

    /// The user's patience with an operation that shows nothing new.
    void cancelWhatIsStuck();

    static constexpr int kTries = 5;
    static constexpr int kPatience = 6; // looks, two in a second
    /// What each scene comes to when nothing goes wrong.
    QHash<QString, QString> m_good;
    bool m_wasShown = true;
    QTimer m_watch;
    QHash<QString, qint64> m_lines;
    QHash<QString, int> m_patience;
    const QSet<QString> kPlayedByTheMacItself{QStringLiteral("dscacheutil"), QStringLiteral("killall")};
};

} // namespace corvane::test
