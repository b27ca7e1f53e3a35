#include "write_journal.h"

#include <QtTest>

// The journal's text format and its reading, as pure functions. The file
// itself is written and read in tst_flows.
class tst_write_journal : public QObject
{
    Q_OBJECT

private slots:
    void format_is_line_safe();
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

void tst_write_journal::format_is_line_safe()
{
    const QList<QByteArray> lines = write_journal::format(two_files()).split('\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[0], QByteArray("loxmere-journal 1"));
    QVERIFY(lines[1].startsWith("flow sync 2026-11-23T12:30:00.000Z 2 "));
    QCOMPARE(lines[2].left(lines[2].lastIndexOf(' ')),
             QByteArray("file 0 /photos/a%20b%25%C3%BC.jpg 161713 1795523400123 "
                        "GPS:GPSLatitude# 43.4674483333333 GPS:GPSMapDatum#^ \"\""));
    QVERIFY(lines[3].startsWith("file 1 relative%0A-all%3D.jpg 7958 -1 "));
}

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

    QTest::addRow("whole") << whole << ""
                           << "df" << true << 0;
    QTest::addRow("cut off after a file") << saved + done0 << ""
                                          << "d." << false << 0;
    QTest::addRow("torn last mark, as after a power cut") << saved + done0 + failed1.left(5) << ""
                                                          << "d." << false << 0;
    QTest::addRow("garbled mark inside")
        << saved + QByteArray(done0).replace("161801", "161802") + failed1 << ""
        << ".f" << false << 1;
    QTest::addRow("mark for no entry") << whole + write_journal::line({"done", "7", "1", "1"}) << ""
                                       << "df" << true << 1;
    QTest::addRow("garbled entry") << garbled_entry << ""
                                   << "xf" << true << 2;
    QTest::addRow("entries cut short") << saved.left(saved.indexOf("file 1")) + done0 << ""
                                       << "dx" << false << 1;
    QTest::addRow("garbled header") << garbled_header << "its header is damaged"
                                    << "" << false << 0;
    QTest::addRow("newer version") << QByteArray(whole).replace("journal 1", "journal 2")
                                   << "it was written by a newer version of Loxmere (format 2)"
                                   << "" << false << 0;
    QTest::addRow("empty file") << QByteArray() << "it isn't an undo record of Loxmere"
                                << "" << false << 0;
    QTest::addRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\0", 10)
                            << "it isn't an undo record of Loxmere"
                            << "" << false << 0;
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
    QTest::addRow("cut off before the first mark") << "...."
                                                   << "r...";
    QTest::addRow("in hand after two") << "dd.."
                                       << "rrr.";
    QTest::addRow("a failed one counts as passed") << "df.."
                                                   << "rrr.";
    QTest::addRow("lost mark behind a later one") << "d.d."
                                                  << "rrrr";
    QTest::addRow("all through") << "dfdu"
                                 << "rrrr";
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
