#pragma once

#include <QProcess>

namespace corvane::bench {

/// A program in another language that does the same piece of work whenever it is asked.
class Peer {
public:
    /// It does a first round at once, so that its start is not measured.
    Peer(const QString &program, const QStringList &arguments);
    ~Peer();

    /// Waits for one round; answers with what the program counted, or -1 when it has gone.
    qint64 round();

private:
    QProcess m_process;
};

} // namespace corvane::bench
