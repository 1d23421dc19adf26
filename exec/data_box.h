#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace corvane {

/// The growing bytes of one captured stream. It needs no lock: the thread that reads both streams of a child is also
/// the one that makes text of them.
class DataBox {
public:
    /// Reads some bytes as read(2) does, straight to the end of what is there.
    [[nodiscard]] ssize_t readFrom(int descriptor)
    {
        const qsizetype size = m_bytes.size();
        if (m_bytes.capacity() - size < kChunk) m_bytes.reserve(std::max(2 * size, size + kChunk));
        m_bytes.resize(size + kChunk);
        const ssize_t count = read(descriptor, m_bytes.data() + size, kChunk);
        m_bytes.resize(size + std::max<ssize_t>(count, 0));
        return count;
    }

    [[nodiscard]] qsizetype size() const { return m_bytes.size(); }

    /// The bytes as text, invalid UTF-8 repaired; the box is empty afterwards.
    [[nodiscard]] QString takeText()
    {
        // QString::fromUtf8 would drop a byte order mark.
        QStringDecoder decoder(QStringDecoder::Utf8,
                               QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
        return decoder.decode(std::exchange(m_bytes, QByteArray()));
    }

private:
    static constexpr qsizetype kChunk = 64 * 1024;
    QByteArray m_bytes;
};

} // namespace corvane
