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
    const QString usage = " [options] [FILE|FOLDER...]\n";
    QTest::addRow("nothing") << QStringList{} << -1 << QStringList{} << "";
    QTest::addRow("relative, absolute, folder, in order")
        << QStringList{"b.jpg", "/p/a.jpg", "../album"} << -1
        << QStringList{"/w/b.jpg", "/p/a.jpg", "/w/../album"} << "";
    // An empty argument must not become the working folder and load it whole.
    QTest::addRow("empty argument") << QStringList{""} << -1 << QStringList{""} << "";
    QTest::addRow("line feed kept for the load to refuse")
        << QStringList{"a\nb.jpg"} << -1 << QStringList{"/w/a\nb.jpg"} << "";
    QTest::addRow("name like an option, after --") << QStringList{"--", "-x.jpg", "--help"} << -1
                                                   << QStringList{"/w/-x.jpg", "/w/--help"} << "";
    QTest::addRow("help") << QStringList{"a.jpg", "--help"} << 0 << QStringList{} << usage;
    QTest::addRow("version") << QStringList{"-v"} << 0 << QStringList{} << "Loxmere 9.8.7\n";
    QTest::addRow("unknown option")
        << QStringList{"--frobnicate", "a.jpg"} << 2 << QStringList{} << usage;
    QTest::addRow("unknown short options")
        << QStringList{"-help"} << 2 << QStringList{} << "Unknown options: e, l, p.\n\nUsage: ";
}

void tst_command_line::parse()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exit_code);
    QFETCH(QStringList, paths);
    QFETCH(QString, output);
    QCoreApplication::setApplicationName("Loxmere");
    QCoreApplication::setApplicationVersion("9.8.7");
    const command_line result = command_line::parse(QStringList{"loxmere"} + arguments, "/w");
    QCOMPARE(result.run ? -1 : result.exit_code, exit_code);
    QCOMPARE(result.paths, paths);
    QVERIFY2(result.output.contains(output), qPrintable(result.output));
    QCOMPARE(result.output.isEmpty(), output.isEmpty());
}

QTEST_GUILESS_MAIN(tst_command_line)
#include "tst_command_line.moc"
