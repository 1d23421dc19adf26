#pragma once

#include "api/http_message.h"

#include <QByteArray>

#include <optional>

namespace corvane {

/// Makes one HTTP answer of the bytes as they come, however they are split, and holds no more than the answer may have.
class HttpAnswerReader {
public:
    enum class State { Reading, Complete, Malformed, TooLarge };

    explicit HttpAnswerReader(qint64 largestBody)
        : m_largestBody(largestBody)
    {}

    State feed(const QByteArray &bytes);
    /// The connection has ended. That completes an answer without a length; any other is cut off.
    State finish();

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool started() const { return m_started; }
    /// Whether the connection can serve another request after this answer.
    [[nodiscard]] bool reusable() const { return m_reusable && m_pending.isEmpty() && m_state == State::Complete; }
    [[nodiscard]] const HttpAnswer &answer() const { return m_answer; }

private:
    enum class Expect { StatusLine, Header, MeasuredBody, BodyToTheEnd, ChunkSize, Chunk, ChunkEnd, Trailer };

    bool step();
    bool stepLine(const QByteArray &line);
    void onStatusLine(const QByteArray &line);
    void onHeader(const QByteArray &line);
    void onHeadEnd();
    void onChunkSize(const QByteArray &line);
    void expectAnotherHead();
    void expectBody(qint64 length);
    bool takeBody();
    std::optional<QByteArray> takeLine();
    bool readsBody() const;
    bool end(State state);

    qint64 m_largestBody;
    State m_state = State::Reading;
    Expect m_expect = Expect::StatusLine;
    QByteArray m_pending;
    HttpAnswer m_answer;
    std::optional<qint64> m_length;
    qint64 m_bodyLeft = 0;
    qint64 m_headBytes = 0;
    bool m_chunked = false;
    bool m_reusable = true;
    bool m_started = false;
};

} // namespace corvane
