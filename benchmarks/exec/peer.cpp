#include "benchmarks/exec/peer.h"

namespace corvane::bench {

namespace {
constexpr int kLongestRound = 120'000;
}

Peer::Peer(const QString &program, const QStringList &arguments)
{
    m_process.start(program, arguments);
    round();
}

Peer::~Peer()
{
    m_process.closeWriteChannel();
    m_process.waitForFinished();
}

qint64 Peer::round()
{
    m_process.write("go\n");
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(kLongestRound)) return -1;
    }
    return m_process.readLine().trimmed().toLongLong();
}

} // namespace corvane::bench
