#include "app/redaction.h"

#include "facts/addresses.h"

#include <QHostAddress>
#include <QRegularExpression>

#include <algorithm>
#include <functional>

namespace corvane {

namespace {

using Match = QRegularExpressionMatch;

constexpr auto kAnyCase = QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption;

/// What looks like a name of the net and says nothing of the user: files and registries that everyone has.
const QStringList &harmlessNames()
{
    static const QStringList names{QStringLiteral("docker-compose.yml"),
                                   QStringLiteral("pihole.env"),
                                   QStringLiteral("dns-backup.json"),
                                   QStringLiteral("colima.yaml"),
                                   QStringLiteral("docker.sock"),
                                   QStringLiteral("github.com"),
                                   QStringLiteral("ghcr.io"),
                                   QStringLiteral("docker.io"),
                                   QStringLiteral("registry-1.docker.io"),
                                   QStringLiteral("formulae.brew.sh"),
                                   QStringLiteral("pi.hole"),
                                   QStringLiteral("example.com"),
                                   QStringLiteral("doubleclick.net"),
                                   QStringLiteral("restore dns.command")};
    return names;
}

/// The text with every match given to `instead`; what it leaves null stays.
QString replaced(const QString &text, const QRegularExpression &pattern,
                 const std::function<QString(const Match &)> &instead)
{
    QString result;
    qsizetype done = 0;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        const Match match = matches.next();
        const QString other = instead(match);
        if (other.isNull()) continue;
        result += QStringView(text).sliced(done, match.capturedStart() - done);
        result += other;
        done = match.capturedEnd();
    }
    result += QStringView(text).sliced(done);
    return result;
}

/// Invisible characters could part a name so that no rule sees it, and half a character could stop every rule.
QString withoutInvisible(const QString &text)
{
    const QString whole = QString::fromUtf8(text.toUtf8());
    QString result;
    result.reserve(whole.size());
    std::ranges::copy_if(whole, std::back_inserter(result),
                         [](QChar c) { return c.category() != QChar::Other_Format; });
    return result;
}

// The patterns take whole runs of characters and never give one back: no text makes them slow. What a run is, is
// decided after that, and rather once too often.

QString withoutSecrets(const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral(
            R"re(((?:pass(?:word|wd|phrase)?|pwd|secret|token|sid|csrf|api[_-]?key|authorization)"?[ \t]*+[=:][ \t]*+))re"
            R"re(("[^"\n]*+"|'[^'\n]*+'|[^\n]++))re"),
        kAnyCase);
    return replaced(text, pattern, [](const Match &match) { return match.captured(1) + QStringLiteral("<secret>"); });
}

QString withoutHomes(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral(R"re((/(?:Users|home)/)([^/\s'":;,]++))re"), kAnyCase);
    return replaced(text, pattern, [](const Match &match) {
        return match.captured(2) == u"Shared" ? QString() : match.captured(1) + QStringLiteral("<user>");
    });
}

QString withoutMail(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral(R"re((?<![\w.+%-])[\w.+%-]++@[\w.-]++)re"), kAnyCase);
    return replaced(text, pattern, [](const Match &) { return QStringLiteral("<mail>"); });
}

QString withoutHardware(const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"re((?<![\da-f])(?:[\da-f]{1,2}[:-]){5}[\da-f]{1,2}(?![\da-f]))re"), kAnyCase);
    return replaced(text, pattern, [](const Match &) { return QStringLiteral("<hardware address>"); });
}

/// What everyone has: this Mac itself, no address, and the backup server that Corvane sets.
bool isHarmless(const QHostAddress &address)
{
    return address.isLoopback() || address == QHostAddress(QHostAddress::AnyIPv4) ||
           address == QHostAddress(QHostAddress::AnyIPv6) || address == QHostAddress(kBackupServer);
}

bool isTime(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral(R"re(^(?:\d+T)?\d{1,2}:\d\d:\d\d(?:\.\d+)?Z?\.?$)re"));
    return pattern.match(text).hasMatch();
}

QString withoutLongAddresses(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral(R"re((?<![\w:.%])[\w:.%]++)re"), kAnyCase);
    return replaced(text, pattern, [](const Match &match) {
        const QString run = match.captured();
        if (run.count(u':') < 2 || isTime(run) || isHarmless(QHostAddress(run))) return QString();
        return QStringLiteral("<address>");
    });
}

QString withoutAddresses(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral(R"re(\d{1,3}(?:\.\d{1,3}){3})re"));
    return replaced(text, pattern, [](const Match &match) {
        return isHarmless(QHostAddress(match.captured())) ? QString() : QStringLiteral("<address>");
    });
}

/// Whether a part of a dotted name is one that numbers and versions do not have.
bool isWord(const QString &label) { return label.size() > 1 && label.front().isLetter(); }

QString withoutNames(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral(R"re((?:[\w*.。．｡-]|%2e)++)re"), kAnyCase);
    static const QRegularExpression dots(QStringLiteral("[.。．｡]|%2e"), kAnyCase);
    return replaced(text, pattern, [](const Match &match) {
        QString name = match.captured();
        QString after;
        while (name.endsWith(u'.')) {
            name.chop(1);
            after += u'.';
        }
        const QStringList labels = name.split(dots);
        const bool isName = labels.size() > 1 && std::any_of(labels.begin() + 1, labels.end(), isWord);
        return isName && !harmlessNames().contains(name.toLower()) ? QStringLiteral("<name>") + after : QString();
    });
}

} // namespace

QStringList Redaction::namesIn(const QString &fullName)
{
    constexpr qsizetype kShortest = 3; // characters
    QStringList names{fullName};
    for (const QString &part : fullName.split(u' ')) {
        if (part.size() >= kShortest) names += part;
    }
    return names;
}

QStringList Redaction::namesOfMachine(const QString &host) { return {host, host.section(u'.', 0, 0)}; }

Redaction::Redaction(const Known &known)
{
    add(known.passwords, QStringLiteral("<secret>"), Where::Anywhere);
    add({known.home}, QStringLiteral("~"), Where::Anywhere);
    add(known.networks, QStringLiteral("<network>"), Where::AsWord);
    add(known.machines, QStringLiteral("<this Mac>"), Where::AsWord);
    add(known.people, QStringLiteral("<user>"), Where::AsWord);
}

void Redaction::add(const QStringList &words, const QString &instead, Where where)
{
    QStringList sorted = words;
    sorted.removeAll(QString());
    // A word that holds another one goes first.
    std::ranges::sort(sorted, std::ranges::greater(), &QString::size);
    for (const QString &word : sorted) {
        const QString text = QRegularExpression::escape(withoutInvisible(word));
        const QString pattern =
            where == Where::AsWord ? QStringLiteral("(?<!\\w)") + text + QStringLiteral("(?!\\w)") : text;
        m_words.append({QRegularExpression(pattern, kAnyCase), instead});
    }
}

QString Redaction::of(QString text) const
{
    text = withoutInvisible(text);
    for (const Word &word : m_words)
        text.replace(word.pattern, word.instead);
    for (const auto rule : {withoutSecrets, withoutHomes, withoutMail, withoutHardware, withoutLongAddresses,
                            withoutAddresses, withoutNames})
        text = rule(text);
    return text;
}

} // namespace corvane
