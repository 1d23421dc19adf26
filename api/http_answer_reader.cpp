#include "api/http_answer_reader.h"

#include <QRegularExpression>

#include <algorithm>
#include <cctype>

namespace corvane {

namespace {

/// Status line, headers and trailers together.
constexpr qint64 kLargestHead = qint64{64} << 10;
constexpr qsizetype kLargestChunkLine = 1024;

std::optional<qint64> wholeNumber(const QByteArray &digits, int base)
{
    const bool plain = !digits.isEmpty() && std::ranges::all_of(digits, [](uchar c) { return std::isxdigit(c) != 0; });
    bool ok = false;
    const qint64 value = digits.toLongLong(&ok, base);
    if (!plain || !ok) return std::nullopt;
    return value;
}

/// A header's name is one word: readers that disagree about where a head ends disagree about the body, too.
bool isHeaderName(QByteArrayView name)
{
    const auto allowed = [](char c) {
        return std::isalnum(static_cast<uchar>(c)) || QByteArrayView("!#$%&'*+-.^_`|~").contains(c);
    };
    return !name.isEmpty() && std::ranges::all_of(name, allowed);
}

bool isHeaderValue(QByteArrayView value)
{
    return std::ranges::none_of(value, [](uchar c) { return (c < 0x20 && c != '\t') || c == 0x7F; });
}

} // namespace

HttpAnswerReader::State HttpAnswerReader::feed(const QByteArray &bytes)
{
    m_started = m_started || !bytes.isEmpty();
    m_pending += bytes;
    while (m_state == State::Reading && step()) {
    }
    return m_state;
}

HttpAnswerReader::State HttpAnswerReader::finish()
{
    m_reusable = false;
    if (m_state == State::Reading) m_state = m_expect == Expect::BodyToTheEnd ? State::Complete : State::Malformed;
    return m_state;
}

bool HttpAnswerReader::end(State state)
{
    m_state = state;
    return false;
}

/// One line, or one piece of the body. False when more bytes are needed or the answer has ended.
bool HttpAnswerReader::step()
{
    if (readsBody()) return takeBody();
    const std::optional<QByteArray> line = takeLine();
    return line && stepLine(*line);
}

bool HttpAnswerReader::stepLine(const QByteArray &line)
{
    switch (m_expect) {
    case Expect::StatusLine:
        onStatusLine(line);
        break;
    case Expect::Header:
        line.isEmpty() ? onHeadEnd() : onHeader(line);
        break;
    case Expect::ChunkSize:
        onChunkSize(line);
        break;
    case Expect::ChunkEnd:
        if (!line.isEmpty()) return end(State::Malformed);
        m_expect = Expect::ChunkSize;
        break;
    default:
        if (line.isEmpty()) return end(State::Complete);
    }
    return m_state == State::Reading;
}

std::optional<QByteArray> HttpAnswerReader::takeLine()
{
    const bool inChunks = m_expect == Expect::ChunkSize || m_expect == Expect::ChunkEnd;
    const qint64 allowed = inChunks ? kLargestChunkLine : kLargestHead - m_headBytes;
    const qsizetype lineFeed = m_pending.indexOf('\n');
    if (lineFeed >= allowed || (lineFeed < 0 && m_pending.size() >= allowed)) {
        end(State::Malformed);
        return std::nullopt;
    }
    if (lineFeed < 0) return std::nullopt;
    QByteArray line = m_pending.left(lineFeed);
    m_pending.remove(0, lineFeed + 1);
    if (!inChunks) m_headBytes += lineFeed + 1;
    if (line.endsWith('\r')) {
        line.chop(1);
    } else if (inChunks) { // a head may do with LF alone, but chunks are counted in bytes
        end(State::Malformed);
        return std::nullopt;
    }
    return line;
}

void HttpAnswerReader::onStatusLine(const QByteArray &line)
{
    static const QRegularExpression shape(QStringLiteral("\\AHTTP/1\\.([01]) ([1-9][0-9]{2})(?: .*)?\\z"));
    const QRegularExpressionMatch match = shape.match(QString::fromLatin1(line));
    m_answer.status = match.captured(2).toInt();
    m_reusable = match.captured(1) == u"1";
    m_expect = Expect::Header;
    // Nobody asked for another protocol.
    if (!match.hasMatch() || m_answer.status == 101) end(State::Malformed);
}

void HttpAnswerReader::onHeader(const QByteArray &line)
{
    const qsizetype colon = line.indexOf(':');
    const QByteArray name = line.left(colon).toLower();
    const QByteArray value = line.mid(colon + 1).trimmed().toLower();
    bool understood = colon > 0 && isHeaderName(name) && isHeaderValue(line.mid(colon + 1));
    if (name == "content-length") {
        const std::optional<qint64> length = wholeNumber(value, 10);
        understood = understood && length && (!m_length || m_length == length);
        m_length = length;
    } else if (name == "transfer-encoding") {
        understood = understood && !m_chunked && value == "chunked";
        m_chunked = true;
    } else if (name == "connection") {
        m_reusable = m_reusable && !value.contains("close");
    }
    if (!understood) end(State::Malformed);
}

void HttpAnswerReader::onHeadEnd()
{
    if (m_answer.status < 200)
        expectAnotherHead();
    else if (m_answer.status == 204 || m_answer.status == 304)
        end(State::Complete);
    else if (m_chunked)
        m_expect = Expect::ChunkSize;
    else if (m_length)
        expectBody(*m_length);
    else
        m_expect = Expect::BodyToTheEnd;
}

/// What an interim answer says of a body is not said of the last one.
void HttpAnswerReader::expectAnotherHead()
{
    m_expect = Expect::StatusLine;
    m_length.reset();
    m_chunked = false;
}

void HttpAnswerReader::expectBody(qint64 length)
{
    m_expect = Expect::MeasuredBody;
    m_bodyLeft = length;
    if (length > m_largestBody)
        end(State::TooLarge);
    else if (length == 0)
        end(State::Complete);
}

void HttpAnswerReader::onChunkSize(const QByteArray &line)
{
    const std::optional<qint64> size = wholeNumber(line.split(';').first().trimmed(), 16);
    m_bodyLeft = size.value_or(0);
    m_expect = m_bodyLeft > 0 ? Expect::Chunk : Expect::Trailer;
    if (!size)
        end(State::Malformed);
    else if (m_bodyLeft > m_largestBody - m_answer.body.size())
        end(State::TooLarge);
}

bool HttpAnswerReader::readsBody() const
{
    return m_expect == Expect::MeasuredBody || m_expect == Expect::BodyToTheEnd || m_expect == Expect::Chunk;
}

bool HttpAnswerReader::takeBody()
{
    const bool measured = m_expect != Expect::BodyToTheEnd;
    const qsizetype taken = measured ? std::min<qint64>(m_bodyLeft, m_pending.size()) : m_pending.size();
    if (taken > m_largestBody - m_answer.body.size()) return end(State::TooLarge);
    m_answer.body += m_pending.left(taken);
    m_pending.remove(0, taken);
    m_bodyLeft -= measured ? taken : 0;
    if (!measured || m_bodyLeft > 0) return false;
    if (m_expect == Expect::MeasuredBody) return end(State::Complete);
    m_expect = Expect::ChunkEnd;
    return true;
}

} // namespace corvane
