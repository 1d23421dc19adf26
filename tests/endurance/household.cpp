#include "tests/endurance/household.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

#include <algorithm>
#include <cmath>

namespace corvane::test {

namespace {

QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
}

bool isWaker(const QString &descriptor)
{
    return QFile::symLinkTarget(QStringLiteral("/proc/self/fd/") + descriptor).endsWith(QLatin1String("[eventfd]"));
}

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

qint64 childrenNow()
{
    qint64 count = 0;
    const QStringList tasks = QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &task : tasks)
        count += content(QStringLiteral("/proc/self/task/%1/children").arg(task)).count(' ');
    return count;
}

} // namespace

Household Household::now()
{
    Household found;
    found.residentBytes =
        content(QStringLiteral("/proc/self/statm")).split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
    const QStringList descriptors = entries(QStringLiteral("/proc/self/fd"));
    found.descriptors = descriptors.size();
    found.wakers = std::ranges::count_if(descriptors, isWaker);
    found.threads = entries(QStringLiteral("/proc/self/task")).size();
    found.children = childrenNow();
    return found;
}

Trend Trend::of(const QList<double> &values)
{
    const double n = static_cast<double>(values.size());
    const double middle = (n - 1) / 2;
    double mean = 0;
    for (const double value : values)
        mean += value / n;
    double across = 0;
    double along = 0;
    for (qsizetype i = 0; i < values.size(); ++i) {
        const double x = static_cast<double>(i) - middle;
        across += x * (values[i] - mean);
        along += x * x;
    }
    const double slope = across / along;
    double left = 0;
    for (qsizetype i = 0; i < values.size(); ++i) {
        const double off = values[i] - mean - slope * (static_cast<double>(i) - middle);
        left += off * off;
    }
    return {slope * (n - 1), 3 * std::sqrt(left / (n - 2) / along) * (n - 1)};
}

Trend Trend::ofLastHalf(const QList<double> &values) { return of(values.sliced(values.size() / 2)); }

qint64 amount(const char *variable, qint64 usual)
{
    bool given = false;
    const qint64 asked = qEnvironmentVariable(variable).toLongLong(&given);
    return given ? asked : usual;
}

} // namespace corvane::test
