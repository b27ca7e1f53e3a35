#include "supported_extensions.h"

#include <QtTest>

class tst_supported_extensions : public QObject
{
    Q_OBJECT

private slots:
    void set_is_lower_case_and_complete();
    void accepted_data();
    void accepted();
    void dialog_filter();
};

void tst_supported_extensions::set_is_lower_case_and_complete()
{
    QCOMPARE(int(supported_extensions.size()), 104);
    QCOMPARE(*supported_extensions.begin(), QStringLiteral("360"));
    QCOMPARE(*supported_extensions.rbegin(), QStringLiteral("xmp"));
    for (const QString &suffix : supported_extensions) {
        QCOMPARE(suffix, suffix.toLower());
        QVERIFY2(!suffix.startsWith('.'), qPrintable(suffix));
    }
}

void tst_supported_extensions::accepted_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("expected");
    QTest::addRow("upper case suffix") << "/p/IMG.JPG" << true;
    QTest::addRow("digit suffix") << "/p/pano.360" << true;
    QTest::addRow("text file") << "/p/notes.txt" << false;
    QTest::addRow("no suffix") << "/p/jpg" << false;
    QTest::addRow("trailing dot") << "/p/photo.jpg." << false;
    QTest::addRow("suffix only in folder") << "/p.jpg/readme" << false;
    QTest::addRow("double suffix ends unsupported") << "/p/a.jpg.bak" << false;
    QTest::addRow("double suffix ends supported") << "/p/a.bak.tif" << true;
    QTest::addRow("near miss") << "/p/a.jpgg" << false;
    QTest::addRow("gpx is not a photo") << "/p/track.gpx" << false;
    QTest::addRow("line feed in name") << "/p/a\nb.jpg" << true;
}

void tst_supported_extensions::accepted()
{
    QFETCH(QString, path);
    QFETCH(bool, expected);
    QCOMPARE(has_supported_extension(path), expected);
}

void tst_supported_extensions::dialog_filter()
{
    const QString filter = supported_files_filter(QStringLiteral("All supported files "));
    QVERIFY(filter.startsWith(QStringLiteral("All supported files (")));
    QVERIFY(filter.endsWith(')'));
    // Every pattern of the filter is one entry of the set, in set order.
    const int open = filter.indexOf('(');
    const QStringList patterns = filter.mid(open + 1, filter.size() - open - 2).split(' ');
    QStringList expected;
    for (const QString &suffix : supported_extensions)
        expected << "*." + suffix;
    QCOMPARE(patterns, expected);
}

QTEST_GUILESS_MAIN(tst_supported_extensions)
#include "tst_supported_extensions.moc"
