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
    void initTestCase();
    void init();

    void load_data();
    void load();
    void click_data();
    void click();
    void click_on_checked_button_announces_again();
};

void tst_datetime_format_selector::initTestCase()
{
    QCoreApplication::setOrganizationName("loxmere-tests");
    QCoreApplication::setApplicationName("tst_datetime_format_selector");
}

void tst_datetime_format_selector::init()
{
    QSettings().clear();
}

void tst_datetime_format_selector::load_data()
{
    QTest::addColumn<QString>("stored_date");
    QTest::addColumn<QString>("stored_time");
    QTest::addColumn<QStringList>("checked");
    QTest::addColumn<QString>("format");

    QTest::addRow("first run") << ""
                               << "" << QStringList{"DD.MM.YYYY", "hh:mm:ss"}
                               << "dd.MM.yyyy - HH:mm:ss";
    QTest::addRow("stored year first, short time")
        << "yyyy-MM-dd"
        << "HH:mm" << QStringList{"YYYY-MM-DD", "hh:mm"} << "yyyy-MM-dd - HH:mm";
    QTest::addRow("stored month first")
        << "MM/dd/yyyy"
        << "HH:mm:ss" << QStringList{"MM/DD/YYYY", "hh:mm:ss"} << "MM/dd/yyyy - HH:mm:ss";
    // A pattern no button offers checks nothing in its group and is kept.
    QTest::addRow("unknown patterns kept") << "d.M.yy"
                                           << "h:mm ap" << QStringList{} << "d.M.yy - h:mm ap";
    QTest::addRow("unknown date only") << "yy"
                                       << "HH:mm" << QStringList{"hh:mm"} << "yy - HH:mm";
}

void tst_datetime_format_selector::load()
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
    QCOMPARE(selector.findChildren<vn::radio *>().size(), 9);
    QCOMPARE(checked_labels(selector), checked);
    QCOMPARE(selector.datetime_format(), format);
    // Construction only reads: a first run leaves the store empty.
    QCOMPARE(QSettings().allKeys(), keys_before);
}

void tst_datetime_format_selector::click_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("time");

    QTest::addRow("DD/MM/YYYY") << "DD/MM/YYYY"
                                << "dd/MM/yyyy"
                                << "HH:mm:ss";
    QTest::addRow("DD.MM.YYYY") << "DD.MM.YYYY"
                                << "dd.MM.yyyy"
                                << "HH:mm:ss";
    QTest::addRow("DD-MM-YYYY") << "DD-MM-YYYY"
                                << "dd-MM-yyyy"
                                << "HH:mm:ss";
    QTest::addRow("YYYY/MM/DD") << "YYYY/MM/DD"
                                << "yyyy/MM/dd"
                                << "HH:mm:ss";
    QTest::addRow("YYYY.MM.DD") << "YYYY.MM.DD"
                                << "yyyy.MM.dd"
                                << "HH:mm:ss";
    QTest::addRow("YYYY-MM-DD") << "YYYY-MM-DD"
                                << "yyyy-MM-dd"
                                << "HH:mm:ss";
    QTest::addRow("MM/DD/YYYY") << "MM/DD/YYYY"
                                << "MM/dd/yyyy"
                                << "HH:mm:ss";
    QTest::addRow("hh:mm:ss") << "hh:mm:ss"
                              << "dd.MM.yyyy"
                              << "HH:mm:ss";
    QTest::addRow("hh:mm is 24-hour") << "hh:mm"
                                      << "dd.MM.yyyy"
                                      << "HH:mm";
}

void tst_datetime_format_selector::click()
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

    QVERIFY(button->isChecked());
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toString(), date + " - " + time);
    QCOMPARE(selector.date_format(), date);
    QCOMPARE(selector.time_format(), time);
    const QSettings settings;
    QCOMPARE(settings.value("date_format").toString(), date);
    QCOMPARE(settings.value("time_format").toString(), time);
    // The other group keeps its button.
    QCOMPARE(checked_labels(selector).size(), 2);
}

void tst_datetime_format_selector::click_on_checked_button_announces_again()
{
    vn::datetime_format_selector selector;
    selector.show();
    QVERIFY(QTest::qWaitForWindowExposed(&selector));
    QSignalSpy changed(&selector, &vn::datetime_format_selector::format_changed);
    vn::radio *button = button_labelled(selector, "DD.MM.YYYY");
    QVERIFY(button && button->isChecked());
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(changed.at(1).at(0).toString(), QString("dd.MM.yyyy - HH:mm:ss"));
    QCOMPARE(QSettings().value("date_format").toString(), QString("dd.MM.yyyy"));
    QCOMPARE(QSettings().value("time_format").toString(), QString("HH:mm:ss"));
}

QTEST_MAIN(tst_datetime_format_selector)
#include "tst_datetime_format_selector.moc"
