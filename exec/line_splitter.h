#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>

namespace corvane {

/// Turns the bytes of one stream into lines of text, however the bytes are cut into chunks.
///
/// A line ends at any Unicode line break; CR LF counts once and a lone CR at once, so a progress bar that redraws its
/// line gives one line per redraw. Invalid UTF-8 is repaired. A splitter belongs to the one thread that reads its
/// stream.
class LineSplitter {
public:
    explicit LineSplitter(std::function<void(QString)> emitLine);

    void feed(QByteArrayView chunk);
    /// Emits the unfinished rest, if any; called once after the stream has ended.
    void flush();

private:
    void cut(QByteArrayView bytes);
    void emitLine(QByteArrayView end);

    std::function<void(QString)> m_emit;
    /// A line is decoded as a whole, so it does not matter where its characters were cut.
    QByteArray m_unfinished;
    bool m_swallowLineFeed = false;
};

} // namespace corvane
