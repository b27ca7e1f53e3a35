#include "write_journal.h"

#include <QtTest>

// The journal's text format and its reading, as pure functions. The file
// itself is written and read in tst_flows.
class tst_write_journal : public QObject
{
    Q_OBJECT

private slots:
    void parse_data();
    void parse();
    void was_reached_data();
    void was_reached();
};

namespace {

const QString states_code = QStringLiteral(".dfu"); // by write_journal::state

write_journal::record two_files()
{
    write_journal::record journal;
    journal.kind = QStringLiteral("sync");
    journal.started = QDateTime(QDate(2026, 11, 23), QTime(12, 30), Qt::UTC);
    journal.entries = {{QStringLiteral("/photos/a b%ü.jpg"),
                        {{"GPS:GPSLatitude#", "43.4674483333333"}, {"GPS:GPSMapDatum#^", ""}},
                        {161713, 1795523400123},
                        {},
                        write_journal::state::pending,
                        true},
                       // read as it stands; the ExifTool guards refuse it
                       {"relative\n-all=.jpg", {}, {7958, -1}, {}, {}, true}};
    return journal;
}

// "x" for an entry that didn't read, else its state's letter.
QString states(const write_journal::record &journal)
{
    QString seen;
    for (const write_journal::entry &e : journal.entries)
        seen += e.readable ? states_code.at(int(e.status)) : QChar('x');
    return seen;
}

} // namespace

void tst_write_journal::parse_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("problem"); // empty: usable
    QTest::addColumn<QString>("states");
    QTest::addColumn<bool>("finished");
    QTest::addColumn<int>("problems");

    const QByteArray saved = write_journal::format(two_files());
    const QByteArray done0 = write_journal::line({"done", "0", "161801", "1795523401789"});
    const QByteArray failed1 = write_journal::line({"failed", "1"});
    const QByteArray whole = saved + done0 + failed1 + write_journal::line({"finished"});
    QByteArray garbled_entry = whole;
    garbled_entry[saved.indexOf("161713")] = '2';
    QByteArray garbled_header = whole;
    garbled_header[saved.indexOf("sync")] = 'S';

    struct row
    {
        const char *tag;
        QByteArray text;
        const char *problem, *states;
        bool finished;
        int problems;
    };
    const row rows[] = {
        {"whole", whole, "", "df", true, 0},
        {"cut off after a file", saved + done0, "", "d.", false, 0},
        {"torn last mark (a power cut)", saved + done0 + failed1.left(5), "", "d.", false, 0},
        {"garbled mark inside", saved + QByteArray(done0).replace("161801", "161802") + failed1, "",
         ".f", false, 1},
        {"mark for no entry", whole + write_journal::line({"done", "7", "1", "1"}), "", "df", true,
         1},
        {"garbled entry", garbled_entry, "", "xf", true, 2},
        {"entries cut short", saved.left(saved.indexOf("file 1")) + done0, "", "dx", false, 1},
        {"garbled header", garbled_header, "its header is damaged", "", false, 0},
        {"newer version", QByteArray(whole).replace("journal 1", "journal 2"),
         "it was written by a newer version of Loxmere (format 2)", "", false, 0},
        {"binary", QByteArray("\x89PNG\r\n\x1a\n\0\0", 10), "it isn't an undo record of Loxmere",
         "", false, 0},
    };
    for (const row &r : rows)
        QTest::newRow(r.tag) << r.text << QString(r.problem) << QString(r.states) << r.finished
                             << r.problems;
}

// Never an entry that didn't read whole: a damaged line is not there.
void tst_write_journal::parse()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, problem);
    QFETCH(QString, states);
    QFETCH(bool, finished);
    QFETCH(int, problems);

    write_journal::record journal;
    QString why;
    QCOMPARE(write_journal::parse(text, &journal, &why), problem.isEmpty());
    QCOMPARE(why, problem);
    QCOMPARE(::states(journal), states);
    QCOMPARE(journal.finished, finished);
    QCOMPARE(journal.problems.size(), problems);
    if (!problem.isEmpty())
        return;
    const write_journal::record expected = two_files();
    QCOMPARE(journal.started, expected.started);
    for (int i = 0; i < journal.entries.size(); ++i) {
        const write_journal::entry &e = journal.entries.at(i);
        QVERIFY(!e.readable ||
                (e.path == expected.entries.at(i).path && e.tags == expected.entries.at(i).tags &&
                 e.before == expected.entries.at(i).before));
    }
    if (states.startsWith('d'))
        QVERIFY(journal.entries.first().after == (write_journal::stamp{161801, 1795523401789}));
}

void tst_write_journal::was_reached_data()
{
    QTest::addColumn<QString>("states");
    QTest::addColumn<QString>("reached"); // "r" reached, "." not
    const char *const rows[][3] = {{"cut off before the first mark", "....", "r..."},
                                   {"in hand after two", "dd..", "rrr."},
                                   {"a failed one counts as passed", "df..", "rrr."},
                                   {"lost mark behind a later one", "d.d.", "rrrr"},
                                   {"all through", "dfdu", "rrrr"}};
    for (const auto &r : rows)
        QTest::newRow(r[0]) << QString(r[1]) << QString(r[2]);
}

void tst_write_journal::was_reached()
{
    QFETCH(QString, states);
    QFETCH(QString, reached);
    write_journal::record journal;
    for (const QChar c : states)
        journal.entries.append(
            {{}, {}, {}, {}, write_journal::state(states_code.indexOf(c)), true});
    QString seen;
    for (int i = 0; i < states.size(); ++i)
        seen += write_journal::was_reached(journal, i) ? 'r' : '.';
    QCOMPARE(seen, reached);
}

QTEST_GUILESS_MAIN(tst_write_journal)
#include "tst_write_journal.moc"
