#include "app/comeback.h"

namespace corvane {

namespace {

const QString kRecord = QStringLiteral("comebacks");
constexpr qint64 kDay = 86'400; // seconds

} // namespace

Comeback::Comeback(SettingsStore &settings, const Clock &clock)
    : m_settings(settings)
    , m_clock(clock)
    , m_record(ComebackRecord::fromText(settings.value(kRecord).toString()))
{
    m_startsAgain = storedBool(settings, QStringLiteral("startsAgain"), false);
    m_bannerHasStarted = storedBool(settings, QStringLiteral("bannerHasStarted"), false);
    m_stoppedByUser = storedBool(settings, QStringLiteral("stoppedByUser"), false);
    connect(this, &Comeback::startsAgainChanged, this, &Comeback::tell);
    connect(this, &Comeback::stoppedByUserChanged, this, &Comeback::tell);
    tell();
}

void Comeback::see(PiholeLook look)
{
    look.at = m_clock.wallTime().toSecsSinceEpoch();
    if (stoppedByUser() && look.undisturbed && look.container.isRunning()) setStoppedByUser(false);
    record(m_plan.see(look));
    tell();
}

std::optional<std::chrono::seconds> Comeback::pause() const
{
    return startsAgain() && !stoppedByUser() ? m_plan.pause() : std::nullopt;
}

void Comeback::setWatched(bool watched)
{
    m_watched = watched;
    tell();
}

void Comeback::beginTry()
{
    m_plan.beginTry();
    tell();
}

void Comeback::endTry(bool started)
{
    m_plan.endTry(started);
    tell();
}

void Comeback::giveUp()
{
    const std::optional<ComebackEntry> entry = m_plan.giveUp();
    if (startsAgain()) record(entry);
    tell();
}

void Comeback::record(const std::optional<ComebackEntry> &entry)
{
    if (!entry) return;
    m_record.add(*entry);
    m_settings.setValue(kRecord, m_record.toText());
}

void Comeback::tell()
{
    const QDateTime now = m_clock.wallTime();
    QStringList sentences;
    for (const ComebackEntry &entry : m_record.entries())
        sentences << comebackSentence(entry, now);
    setHistory(sentences);
    const bool fresh = !sentences.isEmpty() && now.toSecsSinceEpoch() - m_record.entries().first().at < kDay;
    const QString next = whatIsNext();
    setNews(next.isEmpty() && fresh ? sentences.first() : next);
}

QString Comeback::whatIsNext() const
{
    const auto number = QStringLiteral("(try %1 of %2)").arg(m_plan.number()).arg(std::ssize(ComebackPlan::kPauses));
    if (m_plan.trying()) return QStringLiteral("Pi-hole does not run. Corvane is starting it again %1.").arg(number);
    const auto wait = m_watched ? pause() : std::nullopt;
    if (!wait) return {};
    return QStringLiteral("Pi-hole does not run. Corvane starts it again within %1 seconds %2.")
        .arg(wait->count())
        .arg(number);
}

} // namespace corvane
