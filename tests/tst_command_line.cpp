#include "command_line.h"

#include <QtTest>

class tst_command_line : public QObject
{
    Q_OBJECT

private slots:
    void parse_data();
    void parse();
};

void tst_command_line::parse_data()
{
    QTest::addColumn<QStringList>("arguments"); // after the program's name
    QTest::addColumn<int>("exit_code");         // -1: the window opens
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QString>("output"); // a text it must hold
    QTest::addRow("nothing") << QStringList{} << -1 << QStringList{} << "";
    // An empty argument must not become the working folder and load it whole.
    QTest::addRow("relative, empty, absolute, folder, in order")
        << QStringList{"b.jpg", "", "/p/a.jpg", "../album"} << -1
        << QStringList{"/w/b.jpg", "", "/p/a.jpg", "/w/../album"} << "";
    QTest::addRow("names like options, after --") << QStringList{"--", "-x.jpg", "--help"} << -1
                                                  << QStringList{"/w/-x.jpg", "/w/--help"} << "";
    QTest::addRow("help") << QStringList{"a.jpg", "--help"} << 0 << QStringList{}
                          << " [options] [FILE|FOLDER...]\nGives photos GPS positions.\n";
    QTest::addRow("unknown option") << QStringList{"--frobnicate", "a.jpg"} << 2 << QStringList{}
                                    << "Unknown option 'frobnicate'.\n\nUsage: ";
}

void tst_command_line::parse()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exit_code);
    QFETCH(QStringList, paths);
    QFETCH(QString, output);
    const command_line result = command_line::parse(QStringList{"loxmere"} + arguments, "/w");
    QCOMPARE(result.run ? -1 : result.exit_code, exit_code);
    QCOMPARE(result.paths, paths);
    QVERIFY2(result.output.contains(output), qPrintable(result.output));
    QCOMPARE(result.output.isEmpty(), output.isEmpty());
}

QTEST_GUILESS_MAIN(tst_command_line)
#include "tst_command_line.moc"
