#include <vn/diagnostics.h>

#include <QCoreApplication>
#include <QNetworkInterface>
#include <QtTest>

class tst_diagnostics : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void component_report_lines();
    void application_report_data();
    void application_report();
    void network_report_shape();
};

void tst_diagnostics::initTestCase()
{
    QCoreApplication::setApplicationName("DiagTest");
    QCoreApplication::setApplicationVersion("3.4.5");
}

void tst_diagnostics::component_report_lines()
{
    const QStringList lines =
        QString::fromStdString(vn::component_report()).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    const QStringList names = {"application", "vn_infrastructure", "vn_toolkit"};
    // A build from this repository has its 7-digit revision; one outside git says so.
    const QRegularExpression form("^Component: (\\w+)\tVersion: ([0-9a-f]{7}|unknown \\(not "
                                  "built from git\\))$");
    QString revision;
    for (int i = 0; i < lines.size(); ++i) {
        const QRegularExpressionMatch m = form.match(lines.at(i));
        QVERIFY2(m.hasMatch(), qPrintable(lines.at(i)));
        QCOMPARE(m.captured(1), names.at(i));
        if (i == 0)
            revision = m.captured(2);
        QCOMPARE(m.captured(2), revision); // all three come from one repository
    }
    QVERIFY(QString::fromStdString(vn::component_report()).endsWith('\n'));
}

void tst_diagnostics::application_report_data()
{
    QTest::addColumn<QStringList>("extra"); // key, value, key, value...
    QTest::addColumn<QString>("expected_tail");
    QTest::addRow("no extra info adds nothing") << QStringList() << "";
    QTest::addRow("extra info in key order")
        << QStringList({"b", "2", "a", "1"}) << "\na:\t\t1\nb:\t\t2\n";
}

void tst_diagnostics::application_report()
{
    QFETCH(QStringList, extra);
    QFETCH(QString, expected_tail);

    QMap<QString, QString> extra_info;
    for (int i = 0; i + 1 < extra.size(); i += 2)
        extra_info.insert(extra.at(i), extra.at(i + 1));
    const QString report = vn::application_report(extra_info);

#if defined(__clang__)
    const QString compiler = QString("clang Version: %1.%2.%3")
                                 .arg(__clang_major__)
                                 .arg(__clang_minor__)
                                 .arg(__clang_patchlevel__);
#elif defined(__GNUC__)
    const QString compiler =
        QString("gcc Version: %1.%2.%3").arg(__GNUC__).arg(__GNUC_MINOR__).arg(__GNUC_PATCHLEVEL__);
#endif
    const QString head = "OS: " + QSysInfo::prettyProductName() + "\nABI: " + QSysInfo::buildAbi() +
                         "\n" + compiler + "\n\nApplication: DiagTest\nVersion: 3.4.5\nBuild: ";
    QVERIFY2(report.startsWith(head), qPrintable(report));

    const QString build_line = report.mid(head.size()).section('\n', 0, 0);
    const QDateTime built = QLocale::c().toDateTime(build_line.simplified(), "MMM d yyyy HH:mm:ss");
    QVERIFY2(built.isValid(), qPrintable(build_line));
    QVERIFY(built <= QDateTime::currentDateTime());

    const QString components = QString::fromStdString(vn::component_report());
    const QString tail = report.mid(head.size() + build_line.size() + 1);
    QCOMPARE(tail, "\n" + components + expected_tail);
}

void tst_diagnostics::network_report_shape()
{
    const QString report = vn::network_report();
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    if (interfaces.isEmpty()) {
        QCOMPARE(report, QString());
        return;
    }
    QVERIFY(report.endsWith('\n'));
    const QStringList lines = report.chopped(1).split('\n');
    const QRegularExpression name_line("^Interface: (\\S+) \\((.*)\\) HW: (.*)$");
    const QRegularExpression flag_line(
        "^\t((IsUp|IsRunning|CanBroadcast|IsLoopBack|IsPointToPoint|CanMulticast)"
        "(\\|(IsUp|IsRunning|CanBroadcast|IsLoopBack|IsPointToPoint|CanMulticast))*)?$");
    const QRegularExpression address_line("^\tAddress: (\\S+)/(\\d+)$");

    int at = 0;
    for (const QNetworkInterface &interface : interfaces) {
        QVERIFY(at + 1 < lines.size());
        const QRegularExpressionMatch name = name_line.match(lines.at(at++));
        QVERIFY2(name.hasMatch(), qPrintable(lines.at(at - 1)));
        QCOMPARE(name.captured(1), interface.name());
        QVERIFY2(flag_line.match(lines.at(at++)).hasMatch(), qPrintable(lines.at(at - 1)));
        const bool loopback = interface.flags().testFlag(QNetworkInterface::IsLoopBack);
        QCOMPARE(lines.at(at - 1).contains("IsLoopBack"), loopback);
        for (const QNetworkAddressEntry &entry : interface.addressEntries()) {
            const QRegularExpressionMatch address = address_line.match(lines.value(at++));
            QVERIFY2(address.hasMatch(), qPrintable(lines.value(at - 1)));
            QCOMPARE(QHostAddress(address.captured(1)), entry.ip());
            QCOMPARE(address.captured(2).toInt(), entry.prefixLength());
        }
    }
    QCOMPARE(at, lines.size()); // no blank lines between interfaces
}

QTEST_MAIN(tst_diagnostics)
#include "tst_diagnostics.moc"
