#include "model/photo_time.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTimeZone>

#include <cstdlib>

namespace {

const int max_offset_s = 14 * 3600;

// "UTC+05:30" as seconds east of UTC; nothing for any other text.
std::optional<int> fixed_offset(const QByteArray &zone)
{
    if (!zone.startsWith("UTC") || zone.size() == 3)
        return std::nullopt;
    return photo_time::read_offset(QString::fromLatin1(zone.mid(3)));
}

QString two_digits(qint64 value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

} // namespace

std::optional<int> photo_time::read_offset(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^([+-])(\\d\\d):(\\d\\d)$"));
    const QRegularExpressionMatch m = form.match(text);
    if (!m.hasMatch())
        return std::nullopt;
    const int hours = m.capturedRef(2).toInt();
    const int minutes = m.capturedRef(3).toInt();
    const int seconds = hours * 3600 + minutes * 60;
    if (minutes > 59 || seconds > max_offset_s)
        return std::nullopt;
    return m.capturedRef(1) == QLatin1String("-") ? -seconds : seconds;
}

bool photo_time::is_known_zone(const QByteArray &zone)
{
    return zone.isEmpty() || fixed_offset(zone) || QTimeZone::isTimeZoneIdAvailable(zone);
}

QDateTime photo_time::in_zone(const QDate &date, const QTime &time, const QByteArray &zone)
{
    if (!zone.isEmpty()) {
        if (const std::optional<int> offset = fixed_offset(zone))
            return QDateTime(date, time, Qt::OffsetFromUTC, *offset);
        if (QTimeZone::isTimeZoneIdAvailable(zone))
            return QDateTime(date, time, QTimeZone(zone));
    }
    return QDateTime(date, time, Qt::LocalTime);
}

QDateTime photo_time::to_zone(const QDateTime &instant, const QByteArray &zone)
{
    if (!zone.isEmpty()) {
        if (const std::optional<int> offset = fixed_offset(zone))
            return instant.toOffsetFromUtc(*offset);
        if (QTimeZone::isTimeZoneIdAvailable(zone))
            return instant.toTimeZone(QTimeZone(zone));
    }
    return instant.toLocalTime();
}

QString photo_time::correction_text(qint64 seconds)
{
    const qint64 a = std::llabs(seconds);
    const qint64 days = a / 86400;
    QString text = QLatin1String(seconds < 0 ? "-" : "+");
    if (days > 0)
        text += QStringLiteral("%1d ").arg(days);
    return text + two_digits(a % 86400 / 3600) + QLatin1Char(':') + two_digits(a % 3600 / 60) +
           QLatin1Char(':') + two_digits(a % 60);
}

std::optional<qint64> photo_time::read_correction(const QString &text)
{
    // At most 7 digits in each number keeps every sum far inside qint64.
    static const QRegularExpression form(
        QStringLiteral("^\\s*([+-])?\\s*(?:(\\d{1,7})\\s*d)?\\s*"
                       "(?:(\\d{1,7}):(\\d\\d)(?::(\\d\\d))?)?\\s*$"));
    const QRegularExpressionMatch m = form.match(text);
    if (!m.hasMatch() || (m.capturedRef(2).isEmpty() && m.capturedRef(3).isEmpty()))
        return std::nullopt;
    const qint64 minutes = m.capturedRef(4).toLongLong();
    const qint64 seconds = m.capturedRef(5).toLongLong();
    if (minutes > 59 || seconds > 59)
        return std::nullopt;
    const qint64 total = m.capturedRef(2).toLongLong() * 86400 +
                         m.capturedRef(3).toLongLong() * 3600 + minutes * 60 + seconds;
    return m.capturedRef(1) == QLatin1String("-") ? -total : total;
}

std::optional<qint64> photo_time::reference_correction(const QString &shown,
                                                       const QDateTime &recorded,
                                                       const QByteArray &zone)
{
    if (!recorded.isValid())
        return std::nullopt;
    const QStringList parts = shown.simplified().split(QLatin1Char(' '));
    if (parts.size() > 2 || parts.first().isEmpty())
        return std::nullopt;
    QTime time;
    for (const char *format : {"H:mm:ss", "H:mm"}) {
        if (!time.isValid())
            time = QTime::fromString(parts.last(), QLatin1String(format));
    }
    if (!time.isValid())
        return std::nullopt;

    if (parts.size() == 2) {
        QDate date;
        for (const char *format : {"yyyy-MM-dd", "yyyy:MM:dd", "dd.MM.yyyy"}) {
            if (!date.isValid())
                date = QDate::fromString(parts.first(), QLatin1String(format));
        }
        if (!date.isValid())
            return std::nullopt;
        return recorded.secsTo(in_zone(date, time, zone));
    }

    // A time alone: the day before, of or after the recorded one, whichever
    // puts it nearest, so that a clock 3 minutes ahead at 23:59 reads 00:02.
    const QDate recorded_day = to_zone(recorded, zone).date();
    std::optional<qint64> best;
    for (int day = -1; day <= 1; ++day) {
        const qint64 secs = recorded.secsTo(in_zone(recorded_day.addDays(day), time, zone));
        if (!best || std::llabs(secs) < std::llabs(*best))
            best = secs;
    }
    return best;
}
