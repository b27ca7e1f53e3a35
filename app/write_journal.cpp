#include "write_journal.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

const QByteArray magic = QByteArrayLiteral("loxmere-journal");
const QByteArray empty_field = QByteArrayLiteral("\"\"");
const QByteArray kept_characters = QByteArrayLiteral("/:#^");
constexpr int checksum_size = 8;

QByteArray encode(const QString &field)
{
    return field.isEmpty() ? empty_field : field.toUtf8().toPercentEncoding(kept_characters);
}

QString decode(const QByteArray &field)
{
    return field == empty_field ? QString()
                                : QString::fromUtf8(QByteArray::fromPercentEncoding(field));
}

QByteArray checksum(const QByteArray &text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex().left(checksum_size);
}

// The fields of a line whose checksum fits, or nothing. A field that isn't
// percent-encoded text (a blank too many, a raw control character) spoils
// the line as well.
bool read_line(const QByteArray &line, QList<QByteArray> *fields)
{
    const int last_blank = line.lastIndexOf(' ');
    if (last_blank < 1 || line.mid(last_blank + 1) != checksum(line.left(last_blank)))
        return false;
    *fields = line.left(last_blank).split(' ');
    for (const QByteArray &field : qAsConst(*fields)) {
        if (field.isEmpty())
            return false;
        for (const char c : field)
            if (uchar(c) <= ' ' || uchar(c) >= 0x7f)
                return false;
    }
    return true;
}

bool read_number(const QByteArray &field, qint64 minimum, qint64 *value)
{
    bool ok = false;
    *value = field.toLongLong(&ok);
    return ok && *value >= minimum;
}

// "file <index> <path> <size> <time> [<tag> <value>]..." into `entries`.
bool read_file_line(const QList<QByteArray> &fields, QList<write_journal::entry> *entries)
{
    qint64 index = 0;
    write_journal::entry entry;
    if (fields.size() < 5 || fields.size() % 2 == 0 || !read_number(fields[1], 0, &index) ||
        index >= entries->size() || (*entries)[int(index)].readable ||
        !read_number(fields[3], -1, &entry.before.size) ||
        !read_number(fields[4], -1, &entry.before.modified_ms))
        return false;
    entry.path = decode(fields[2]);
    for (int i = 5; i + 1 < fields.size(); i += 2)
        entry.tags.insert(decode(fields[i]), decode(fields[i + 1]));
    (*entries)[int(index)] = entry;
    return true;
}

// A mark: "done <index> <size> <time>", "failed <index>", "undone <index>".
bool read_mark(const QList<QByteArray> &fields, QList<write_journal::entry> *entries)
{
    qint64 index = 0;
    if (fields.size() < 2 || !read_number(fields[1], 0, &index) || index >= entries->size())
        return false;
    write_journal::entry &entry = (*entries)[int(index)];
    if (fields[0] == "done") {
        write_journal::stamp after;
        if (fields.size() != 4 || !read_number(fields[2], 0, &after.size) ||
            !read_number(fields[3], -1, &after.modified_ms))
            return false;
        entry.after = after;
        entry.status = write_journal::state::done;
        return true;
    }
    if (fields.size() != 2)
        return false;
    if (fields[0] == "failed")
        entry.status = write_journal::state::failed;
    else if (fields[0] == "undone")
        entry.status = write_journal::state::undone;
    else
        return false;
    return true;
}

} // namespace

QString write_journal::default_path()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/last_write.journal");
}

QByteArray write_journal::line(const QStringList &fields)
{
    QByteArray text;
    for (const QString &field : fields) {
        if (!text.isEmpty())
            text += ' ';
        text += encode(field);
    }
    return text + ' ' + checksum(text) + '\n';
}

QByteArray write_journal::format(const record &journal)
{
    QByteArray text = magic + ' ' + QByteArray::number(format_version) + '\n';
    text += line({QStringLiteral("flow"), journal.kind,
                  journal.started.toUTC().toString(Qt::ISODateWithMs),
                  QString::number(journal.entries.size())});
    for (int i = 0; i < journal.entries.size(); ++i) {
        const entry &e = journal.entries.at(i);
        QStringList fields = {QStringLiteral("file"), QString::number(i), e.path,
                              QString::number(e.before.size),
                              QString::number(e.before.modified_ms)};
        for (auto it = e.tags.cbegin(); it != e.tags.cend(); ++it)
            fields << it.key() << it.value();
        text += line(fields);
    }
    return text;
}

bool write_journal::parse(const QByteArray &text, record *journal, QString *problem)
{
    *journal = record();
    QList<QByteArray> lines = text.split('\n');
    // What follows the last line end is a line cut off in the middle.
    const bool torn_end = !lines.last().isEmpty();
    const QList<QByteArray> head = lines.value(0).split(' ');
    if (head.size() != 2 || head[0] != magic) {
        *problem = tr("it isn't an undo record of Loxmere");
        return false;
    }
    bool ok = false;
    const int version = head[1].toInt(&ok);
    if (!ok || version < 1) {
        *problem = tr("its first line is damaged");
        return false;
    }
    if (version > format_version) {
        *problem = tr("it was written by a newer version of Loxmere (format %1)").arg(version);
        return false;
    }
    QList<QByteArray> fields;
    qint64 count = 0;
    if (!read_line(lines.value(1), &fields) || fields.size() != 4 || fields[0] != "flow" ||
        !read_number(fields[3], 0, &count) || count > text.size()) {
        *problem = tr("its header is damaged");
        return false;
    }
    journal->kind = decode(fields[1]);
    journal->started = QDateTime::fromString(decode(fields[2]), Qt::ISODateWithMs);
    if ((journal->kind != QLatin1String("sync") && journal->kind != QLatin1String("remove")) ||
        !journal->started.isValid()) {
        *problem = tr("its header is damaged");
        return false;
    }
    entry unread;
    unread.readable = false;
    for (qint64 i = 0; i < count; ++i)
        journal->entries.append(unread);

    for (int n = 2; n < lines.size(); ++n) {
        const QByteArray &text_line = lines.at(n);
        if (text_line.isEmpty())
            continue;
        const bool last = n == lines.size() - 1;
        bool used = read_line(text_line, &fields);
        if (used) {
            if (fields[0] == "file")
                used = read_file_line(fields, &journal->entries);
            else if (fields[0] == "finished" && fields.size() == 1)
                journal->finished = true;
            else
                used = read_mark(fields, &journal->entries);
        }
        // A mark cut off by a power cut is expected; anything else is damage.
        if (!used && !(last && torn_end))
            journal->problems << tr("line %1 can't be read").arg(n + 1);
    }
    int unreadable = 0;
    for (const entry &e : qAsConst(journal->entries))
        unreadable += e.readable ? 0 : 1;
    if (unreadable > 0)
        journal->problems << tr("files whose entries are missing or damaged, not to be "
                                "undone: %1 of %2")
                                 .arg(unreadable)
                                 .arg(count);
    return true;
}

bool write_journal::was_reached(const record &journal, int index)
{
    const QList<entry> &entries = journal.entries;
    if (entries.at(index).status != state::pending)
        return true;
    // Files are written in order: the flow got past this one when anything
    // behind it is marked (its own mark was lost),
    for (int i = index + 1; i < entries.size(); ++i)
        if (entries.at(i).status != state::pending)
            return true;
    // and it was in hand when it comes first or right after a marked one.
    return index == 0 || entries.at(index - 1).status != state::pending;
}

bool write_journal::is_undoable(const record &journal, int index)
{
    const entry &e = journal.entries.at(index);
    return e.readable &&
           (e.status == state::done || (e.status == state::pending && was_reached(journal, index)));
}

int write_journal::undoable_count(const record &journal)
{
    int count = 0;
    for (int i = 0; i < journal.entries.size(); ++i)
        count += is_undoable(journal, i) ? 1 : 0;
    return count;
}

write_journal::write_journal(const QString &path)
    : path_(path)
{}

write_journal::~write_journal()
{
    delete marks_;
}

bool write_journal::start(const record &journal, QString *error)
{
    QSaveFile file(path_);
    const QString folder = QFileInfo(path_).absolutePath();
    const bool made = QDir().mkpath(folder);
    if (!made || !file.open(QIODevice::WriteOnly) || file.write(format(journal)) < 0 ||
        !file.commit()) {
        *error = made ? file.errorString()
                      : tr("can't make the folder %1").arg(QDir::toNativeSeparators(folder));
        qWarning("%s: Can't save the undo record '%s': %s", Q_FUNC_INFO, qUtf8Printable(path_),
                 qUtf8Printable(*error));
        return false;
    }
    delete marks_;
    marks_ = new QFile(path_);
    if (!marks_->open(QIODevice::Append)) {
        *error = marks_->errorString();
        start_in_memory(journal);
        return false;
    }
    record_ = journal;
    saved_ = true;
    return true;
}

void write_journal::start_in_memory(const record &journal)
{
    delete marks_;
    marks_ = nullptr;
    // An older record left there would be offered at the next start.
    if (QFileInfo::exists(path_) && !QFile::remove(path_))
        qWarning("%s: Can't remove the old undo record '%s'.", Q_FUNC_INFO, qUtf8Printable(path_));
    record_ = journal;
    saved_ = false;
}

void write_journal::append(const QStringList &fields)
{
    if (!marks_)
        return;
    const QByteArray text = line(fields);
    if (marks_->write(text) != text.size() || !marks_->flush()) {
        qWarning("%s: Can't add to the undo record '%s': %s", Q_FUNC_INFO, qUtf8Printable(path_),
                 qUtf8Printable(marks_->errorString()));
        return;
    }
    // On disk before ExifTool touches the next file: after a power cut the
    // mark of every file but the last one written is there.
#if defined(Q_OS_LINUX)
    ::fdatasync(marks_->handle());
#elif defined(Q_OS_UNIX)
    ::fsync(marks_->handle());
#endif
}

void write_journal::mark_done(int index, const stamp &after)
{
    entry &e = record_.entries[index];
    e.status = state::done;
    e.after = after;
    append({QStringLiteral("done"), QString::number(index), QString::number(after.size),
            QString::number(after.modified_ms)});
}

void write_journal::mark_failed(int index)
{
    record_.entries[index].status = state::failed;
    append({QStringLiteral("failed"), QString::number(index)});
}

void write_journal::mark_finished()
{
    record_.finished = true;
    append({QStringLiteral("finished")});
}

void write_journal::mark_undone(int index)
{
    record_.entries[index].status = state::undone;
    append({QStringLiteral("undone"), QString::number(index)});
}

void write_journal::clear()
{
    delete marks_;
    marks_ = nullptr;
    record_ = record();
    if (saved_ && QFileInfo::exists(path_) && !QFile::remove(path_))
        qWarning("%s: Can't remove the undo record '%s'.", Q_FUNC_INFO, qUtf8Printable(path_));
    saved_ = false;
}

bool write_journal::load(QString *problem)
{
    delete marks_;
    marks_ = nullptr;
    record_ = record();
    saved_ = false;
    QFile file(path_);
    if (!file.exists())
        return false;
    if (!file.open(QIODevice::ReadOnly)) {
        *problem = file.errorString();
        return false;
    }
    const QByteArray text = file.readAll();
    file.close();
    if (!parse(text, &record_, problem)) {
        record_ = record();
        return false;
    }
    marks_ = new QFile(path_);
    if (!marks_->open(QIODevice::Append)) {
        delete marks_;
        marks_ = nullptr;
    } else if (!text.endsWith('\n')) {
        marks_->write("\n"); // the next mark mustn't join a torn line
    }
    saved_ = true;
    return true;
}

bool write_journal::set_aside()
{
    delete marks_;
    marks_ = nullptr;
    const QString aside = path_ + QStringLiteral(".unusable");
    QFile::remove(aside);
    return QFile::rename(path_, aside);
}
