#include <vn/datetime_format_selector.h>
#include <vn/radio.h>

#include <QSettings>
#include <QSignalSpy>
#include <QtTest>

namespace {

vn::radio *button_labelled(const QWidget &selector, const QString &text)
{
    for (vn::radio *button : selector.findChildren<vn::radio *>())
        if (button->text() == text)
            return button;
    return nullptr;
}

QStringList checked_labels(const QWidget &selector)
{
    QStringList labels;
    for (vn::radio *button : selector.findChildren<vn::radio *>())
        if (button->isChecked())
            labels << button->text();
    labels.sort();
    return labels;
}

} // namespace

class tst_datetime_format_selector : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("loxmere-tests");
        QCoreApplication::setApplicationName("tst_datetime_format_selector");
    }

    void init() { QSettings().clear(); }

    void load_data()
    {
        QTest::addColumn<QString>("stored_date");
        QTest::addColumn<QString>("stored_time");
        QTest::addColumn<QStringList>("checked");
        QTest::addColumn<QString>("format");

        QTest::addRow("first run")
            << ""
            << "" << QStringList{"DD.MM.YYYY", "hh:mm:ss"} << "dd.MM.yyyy - HH:mm:ss";
        QTest::addRow("stored month first, short time")
            << "MM/dd/yyyy"
            << "HH:mm" << QStringList{"MM/DD/YYYY", "hh:mm"} << "MM/dd/yyyy - HH:mm";
        // A pattern no button offers checks nothing in its group and is kept.
        QTest::addRow("unknown date pattern kept")
            << "d.M.yy"
            << "HH:mm:ss" << QStringList{"hh:mm:ss"} << "d.M.yy - HH:mm:ss";
    }

    void load()
    {
        QFETCH(QString, stored_date);
        QFETCH(QString, stored_time);
        QFETCH(QStringList, checked);
        QFETCH(QString, format);

        if (!stored_date.isEmpty()) {
            QSettings settings;
            settings.setValue("date_format", stored_date);
            settings.setValue("time_format", stored_time);
        }
        const QStringList keys_before = QSettings().allKeys();

        vn::datetime_format_selector selector;
        QCOMPARE(checked_labels(selector), checked);
        QCOMPARE(selector.datetime_format(), format);
        // Construction only reads: a first run leaves the store empty.
        QCOMPARE(QSettings().allKeys(), keys_before);
    }

    void click_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("time");

        const char *dates[][2] = {{"DD/MM/YYYY", "dd/MM/yyyy"}, {"DD.MM.YYYY", "dd.MM.yyyy"},
                                  {"DD-MM-YYYY", "dd-MM-yyyy"}, {"YYYY/MM/DD", "yyyy/MM/dd"},
                                  {"YYYY.MM.DD", "yyyy.MM.dd"}, {"YYYY-MM-DD", "yyyy-MM-dd"},
                                  {"MM/DD/YYYY", "MM/dd/yyyy"}};
        for (const auto &d : dates)
            QTest::newRow(d[0]) << d[0] << d[1] << "HH:mm:ss";
        QTest::newRow("hh:mm:ss") << "hh:mm:ss"
                                  << "dd.MM.yyyy"
                                  << "HH:mm:ss";
        QTest::newRow("hh:mm is 24-hour") << "hh:mm"
                                          << "dd.MM.yyyy"
                                          << "HH:mm";
    }

    // Each click announces and stores the format, also a click on the button
    // that is already checked.
    void click()
    {
        QFETCH(QString, label);
        QFETCH(QString, date);
        QFETCH(QString, time);

        vn::datetime_format_selector selector;
        selector.show();
        QVERIFY(QTest::qWaitForWindowExposed(&selector));
        QSignalSpy changed(&selector, &vn::datetime_format_selector::format_changed);
        vn::radio *button = button_labelled(selector, label);
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::mouseClick(button, Qt::LeftButton);

        QVERIFY(button->isChecked());
        QCOMPARE(changed.count(), 2);
        QCOMPARE(changed.at(1).at(0).toString(), date + " - " + time);
        QCOMPARE(selector.date_format(), date);
        QCOMPARE(selector.time_format(), time);
        const QSettings settings;
        QCOMPARE(settings.value("date_format").toString(), date);
        QCOMPARE(settings.value("time_format").toString(), time);
        // The other group keeps its button.
        QCOMPARE(checked_labels(selector).size(), 2);
    }
};

QTEST_MAIN(tst_datetime_format_selector)
#include "tst_datetime_format_selector.moc"
