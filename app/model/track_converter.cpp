#include "model/track_converter.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

// What GPSBabel prints for a broken file can be the file's own bytes, once
// per line of it ("IGC bad input record: '...'"): the user sees a few lines.
constexpr qint64 message_bytes = 16 * 1024;
constexpr int message_lines = 6;
constexpr int message_line_chars = 300;
// After kill() the process is gone within moments; this only bounds the wait.
constexpr int kill_wait_ms = 5000;

QString readable_messages(const QByteArray &bytes)
{
    QStringList lines;
    const QStringList all = QString::fromLocal8Bit(bytes).split(QLatin1Char('\n'));
    for (QString line : all) {
        for (QChar &c : line) {
            if (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format ||
                c == QChar::ReplacementCharacter)
                c = QLatin1Char('?');
        }
        line = line.trimmed();
        if (line.size() > message_line_chars)
            line = line.left(message_line_chars) + QStringLiteral("...");
        if (line.isEmpty() || (!lines.isEmpty() && lines.last() == line))
            continue;
        if (lines.size() == message_lines) {
            lines << QStringLiteral("...");
            break;
        }
        lines << line;
    }
    return lines.join(QLatin1Char('\n'));
}

// RMC carries the date, GGA the elevation. GPSBabel 1.8 joins a GGA to the
// RMC that follows it, so a logger that writes RMC first gets every point one
// fix late (the position of 10:00:00 at 10:00:10). Read with gpgga=0, the
// positions and times are right.
bool rmc_before_gga(const QByteArray &head)
{
    static const QRegularExpression sentence(QStringLiteral("\\$[A-Z]{2}(RMC|GGA),([0-9.]*)"));
    QString rmc_time;
    for (QRegularExpressionMatchIterator it = sentence.globalMatch(QString::fromLatin1(head));
         it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        if (match.capturedRef(1) == QLatin1String("RMC")) {
            if (rmc_time.isNull())
                rmc_time = match.captured(2);
        } else if (!rmc_time.isNull()) {
            return match.capturedRef(2) == rmc_time;
        }
    }
    return false;
}

bool holds_nmea(const QByteArray &head)
{
    static const QRegularExpression sentence(
        QStringLiteral("\\$[A-Z]{2}(RMC|GGA|GLL|GSA|GSV|VTG|ZDA),"));
    return sentence.match(QString::fromLatin1(head)).hasMatch();
}

} // namespace

track_converter::track_converter(const QString &program, int limit_ms)
    : program_(program)
    , limit_ms_(limit_ms)
{}

// GPSBabel detects no format: the suffix decides.
QString track_converter::input_format(const QString &suffix, const QByteArray &head)
{
    if (suffix == QLatin1String("kml") || suffix == QLatin1String("kmz"))
        return QStringLiteral("kml");
    if (suffix == QLatin1String("fit"))
        return QStringLiteral("garmin_fit");
    if (suffix == QLatin1String("tcx"))
        return QStringLiteral("gtrnctr");
    if (suffix == QLatin1String("igc"))
        return QStringLiteral("igc");
    if (suffix == QLatin1String("csv"))
        return QStringLiteral("unicsv");
    if (suffix == QLatin1String("plt"))
        return QStringLiteral("ozi");
    const bool nmea =
        suffix == QLatin1String("nmea") ||
        ((suffix == QLatin1String("txt") || suffix == QLatin1String("log")) && holds_nmea(head));
    if (!nmea)
        return QString();
    return rmc_before_gga(head) ? QStringLiteral("nmea,gpgga=0") : QStringLiteral("nmea");
}

QStringList track_converter::arguments(const QString &format, const QString &input,
                                       const QString &output)
{
    return {QStringLiteral("-t"),
            QStringLiteral("-i"),
            format,
            QStringLiteral("-f"),
            input,
            QStringLiteral("-x"),
            QStringLiteral("nuketypes,waypoints,routes"),
            QStringLiteral("-o"),
            QStringLiteral("gpx,gpxver=1.1"),
            QStringLiteral("-F"),
            output};
}

// GPSBabel's standard error goes to a file beside `output` rather than into
// memory: for a large broken file it repeats a line per input line.
bool track_converter::convert(const QString &format, const QString &input, const QString &output,
                              QString *messages) const
{
    messages->clear();
    QFile::remove(output);
    const QString program = QStandardPaths::findExecutable(program_);
    if (program.isEmpty()) {
        qWarning("%s: '%s' not found on the PATH.", Q_FUNC_INFO, qUtf8Printable(program_));
        *messages = tr("GPSBabel, which reads every track format but GPX, isn't installed.");
        return false;
    }
    const QString error_file = output + QStringLiteral(".messages");
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(error_file);
    // Absolute, so that a name like "-x.kml" can't be taken for an option.
    process.start(program,
                  arguments(format, QFileInfo(input).absoluteFilePath(),
                            QFileInfo(output).absoluteFilePath()),
                  QIODevice::ReadOnly);
    if (!process.waitForStarted(limit_ms_)) {
        qWarning("%s: Could not start '%s': %s.", Q_FUNC_INFO, qUtf8Printable(program),
                 qUtf8Printable(process.errorString()));
        *messages = tr("GPSBabel could not be started: %1").arg(process.errorString());
        QFile::remove(error_file);
        return false;
    }
    const bool finished = process.waitForFinished(limit_ms_);
    if (!finished) {
        process.kill();
        process.waitForFinished(kill_wait_ms);
    }
    QFile errors(error_file);
    const QString printed = errors.open(QIODevice::ReadOnly)
                                ? readable_messages(errors.read(message_bytes))
                                : QString();
    errors.close();
    QFile::remove(error_file);

    if (!finished) {
        qWarning("%s: '%s' ran longer than %d ms; killed.", Q_FUNC_INFO, qUtf8Printable(input),
                 limit_ms_);
        *messages = tr("GPSBabel did not finish within %1 seconds.").arg(limit_ms_ / 1000.0);
    } else if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        qWarning("%s: GPSBabel failed on '%s' (exit %d): %s", Q_FUNC_INFO, qUtf8Printable(input),
                 process.exitCode(), qUtf8Printable(printed));
        *messages =
            printed.isEmpty()
                ? tr("GPSBabel failed with exit code %1.")
                      .arg(process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1)
                : printed;
    } else {
        if (!printed.isEmpty())
            qInfo("%s: GPSBabel on '%s': %s", Q_FUNC_INFO, qUtf8Printable(input),
                  qUtf8Printable(printed));
        *messages = printed;
        return true;
    }
    QFile::remove(output);
    return false;
}
