#pragma once

#include <QStringList>

namespace corvane::played {

/// What the played frameworks were asked, in order.
class Diary {
public:
    static void note(const QString &call) { calls() << call; }
    /// Everything since the last time.
    [[nodiscard]] static QStringList take() { return std::exchange(calls(), {}); }

private:
    static QStringList &calls()
    {
        static QStringList list;
        return list;
    }
};

} // namespace corvane::played
