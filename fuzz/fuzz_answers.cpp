#include "api/http_answer_reader.h"
#include "api/multipart.h"
#include "api/pihole_answers.h"
#include "api/pihole_history.h"
#include "api/pihole_lists.h"
#include "api/pihole_rules.h"
#include "fuzz/require.h"

#include <cstdint>

using namespace corvane;

namespace {

using State = HttpAnswerReader::State;

constexpr qint64 kLargestBody = 4096;

/// However an answer is split, it is the same answer.
void checkReader(const QByteArray &bytes)
{
    HttpAnswerReader whole(kLargestBody);
    HttpAnswerReader split(kLargestBody);
    whole.feed(bytes);
    for (qsizetype at = 0; at < bytes.size(); at += 7)
        split.feed(bytes.mid(at, 7));
    require(whole.state() == split.state());
    require(whole.answer().status == split.answer().status);
    require(whole.answer().body.size() <= kLargestBody);
    require(whole.finish() != State::Reading && split.finish() == whole.state());
    if (whole.state() == State::Complete) require(whole.answer().body == split.answer().body);
}

void checkForm(const QByteArray &bytes)
{
    const QByteArray body = multipartBody("b", QString::fromUtf8(bytes), {});
    require(body.count('"') == 4 && body.count('\n') == 6);
}

void checkAnswers(const QByteArray &bytes)
{
    if (const auto sid = parseLogin(bytes)) require(!sid->isEmpty() && !sid->contains(u'\n') && !sid->contains(u'\r'));
    (void)parseSummary(bytes);
    (void)parseBlocking(bytes);
    (void)parseQueries(bytes);
    (void)parsePrivacyLevel(bytes);
    (void)parseLists(bytes);
    (void)parseRules(bytes);
    (void)parseRuleAdded(bytes);
    (void)parseHistory(bytes);
    (void)parseTopBlocked(bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    checkReader(bytes);
    checkForm(bytes);
    checkAnswers(bytes);
    return 0;
}
