#include <vn/diagnostics.h>

#include <QCoreApplication>
#include <QNetworkInterface>
#include <QtTest>

class tst_diagnostics : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName("DiagTest");
        QCoreApplication::setApplicationVersion("3.4.5");
    }

    void component_report_lines()
    {
        // A build from this repository has its 7-digit revision; one outside git
        // says so. All three components come from one repository.
        const QString report = QString::fromStdString(vn::component_report());
        const QRegularExpression form(
            "^Component: application\tVersion: ([0-9a-f]{7}|unknown \\(not built from git\\))\n"
            "Component: vn_infrastructure\tVersion: \\1\nComponent: vn_toolkit\tVersion: \\1\n$");
        QVERIFY2(form.match(report).hasMatch(), qPrintable(report));
    }

    // Compiler and build date come from the build; extra info follows the
    // components in key order.
    void application_report()
    {
        const QString report = vn::application_report({{"b", "2"}, {"a", "1"}});
#if defined(__clang__)
        const QString compiler = QString("clang Version: %1.%2.%3")
                                     .arg(__clang_major__)
                                     .arg(__clang_minor__)
                                     .arg(__clang_patchlevel__);
#elif defined(__GNUC__)
        const QString compiler = QString("gcc Version: %1.%2.%3")
                                     .arg(__GNUC__)
                                     .arg(__GNUC_MINOR__)
                                     .arg(__GNUC_PATCHLEVEL__);
#endif
        const QString head = "OS: " + QSysInfo::prettyProductName() +
                             "\nABI: " + QSysInfo::buildAbi() + "\n" + compiler +
                             "\n\nApplication: DiagTest\nVersion: 3.4.5\nBuild: ";
        QVERIFY2(report.startsWith(head), qPrintable(report));

        const QString build_line = report.mid(head.size()).section('\n', 0, 0);
        const QDateTime built =
            QLocale::c().toDateTime(build_line.simplified(), "MMM d yyyy HH:mm:ss");
        QVERIFY2(built.isValid(), qPrintable(build_line));
        QVERIFY(built <= QDateTime::currentDateTime());

        const QString components = QString::fromStdString(vn::component_report());
        const QString tail = report.mid(head.size() + build_line.size() + 1);
        QCOMPARE(tail, "\n" + components + "\na:\t\t1\nb:\t\t2\n");
    }

    void network_report_shape()
    {
        // Per interface a name line, a line of flags, then one line per address.
        QString expected;
        for (const QNetworkInterface &interface : QNetworkInterface::allInterfaces()) {
            expected += QStringLiteral("Interface: %1 (").arg(interface.name());
            expected += interface.flags().testFlag(QNetworkInterface::IsLoopBack) ? "L" : "F";
            for (const QNetworkAddressEntry &entry : interface.addressEntries())
                expected += QStringLiteral("\tAddress: %1/%2\n")
                                .arg(entry.ip().toString())
                                .arg(entry.prefixLength());
        }
        const QString report = vn::network_report();
        QString shape;
        for (const QString &line : report.split('\n', Qt::SkipEmptyParts)) {
            if (line.startsWith("Interface: "))
                shape += line.left(line.indexOf('(') + 1);
            else if (line.startsWith("\tAddress: "))
                shape += line + '\n';
            else if (QRegularExpression("^\t[A-Za-z|]*$").match(line).hasMatch())
                shape += line.contains("IsLoopBack") ? "L" : "F";
            else
                QFAIL(qPrintable(line));
        }
        QCOMPARE(shape, expected);
        QVERIFY(report.isEmpty() || report.endsWith('\n'));
        QVERIFY(!report.contains("\n\n"));
    }
};

QTEST_MAIN(tst_diagnostics)
#include "tst_diagnostics.moc"
