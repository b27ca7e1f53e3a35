#include "camera_clock_settings.h"
#include "dialog_cameras.h"
#include "model/exif_cache.h"
#include "model/photo_time.h"
#include "model/table_data_model.h"

#include <vn/button_dark.h>
#include <vn/combobox.h>
#include <vn/lineedit.h>

#include <QLabel>
#include <QRegularExpression>
#include <QSettings>
#include <QtTest>

// Runs with TZ=UTC. Two cameras: "Cam A" with a photo at 2021-06-01 12:00
// (no zone of its own), and the unknown camera with one at 13:00 +02:00.
class tst_dialog_cameras : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void edits_data();
    void edits();
    void stored_clocks_come_back();

private:
    table_data_model *model_ = nullptr;
};

void tst_dialog_cameras::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
}

void tst_dialog_cameras::init()
{
    QSettings().clear();
    auto cache = exif_cache::instance();
    cache->values["/p/a.jpg"] = {{"rec_year", "2021"}, {"rec_month", "06"},  {"rec_day", "01"},
                                 {"rec_hour", "12"},   {"rec_minute", "00"}, {"rec_second", "00"},
                                 {"camera", "Cam A"}};
    cache->values["/p/b.jpg"] = {
        {"rec_year", "2021"}, {"rec_month", "06"},  {"rec_day", "01"},          {"rec_hour", "13"},
        {"rec_minute", "00"}, {"rec_second", "00"}, {"exif_timezone", "+02:00"}};
    model_ = new table_data_model;
    model_->add_cached_file("/p/a.jpg");
    model_->add_cached_file("/p/b.jpg");
}

void tst_dialog_cameras::cleanup()
{
    delete model_;
    exif_cache::instance()->clear();
}

// Each row edits camera row `row` ("zone", "correction", "reference:<shown>"
// or "reset", with `text`), starting from the clock `before`. Expected: the
// camera's clock after it, as "<zone>|<seconds>", and the message shown.
void tst_dialog_cameras::edits_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("message");

    QTest::addRow("zone from the list") << 1 << "|0"
                                        << "zone"
                                        << "Asia/Tokyo"
                                        << "Asia/Tokyo|0"
                                        << "";
    QTest::addRow("fixed offset typed") << 1 << "|0"
                                        << "zone"
                                        << "UTC+05:45"
                                        << "UTC+05:45|0"
                                        << "";
    QTest::addRow("computer's zone again") << 1 << "Asia/Tokyo|60"
                                           << "zone"
                                           << "This computer's zone"
                                           << "|60"
                                           << "";
    QTest::addRow("unknown zone") << 1 << "Asia/Tokyo|0"
                                  << "zone"
                                  << "Mars/Olympus"
                                  << "Asia/Tokyo|0"
                                  << "not a time zone known here";
    QTest::addRow("correction typed") << 1 << "|0"
                                      << "correction"
                                      << "-0:03:00"
                                      << "|-180"
                                      << "";
    QTest::addRow("correction unreadable") << 1 << "|60"
                                           << "correction"
                                           << "3 min"
                                           << "|60"
                                           << "Can't read the correction";
    QTest::addRow("correction beyond ten years") << 1 << "|0"
                                                 << "correction"
                                                 << "3654d"
                                                 << "|0"
                                                 << "more than ten years";
    // 12:00 read in this computer's zone (UTC); the clock showed 12:03:30.
    QTest::addRow("reference") << 1 << "|0"
                               << "reference"
                               << "2021-06-01 12:03:30"
                               << "|210"
                               << "";
    // The photo records +02:00: what it shows is read in that zone, whatever
    // the camera's zone, and the correction in force doesn't count.
    QTest::addRow("reference, own zone") << 0 << "Asia/Tokyo|500"
                                         << "reference"
                                         << "12:58"
                                         << "Asia/Tokyo|-120"
                                         << "";
    QTest::addRow("reference unreadable") << 1 << "|60"
                                          << "reference"
                                          << "noon"
                                          << "|60"
                                          << "Can't read the time";
    QTest::addRow("reset") << 1 << "Asia/Tokyo|60"
                           << "reset"
                           << ""
                           << "|0"
                           << "";
}

void tst_dialog_cameras::edits()
{
    QFETCH(int, row);
    QFETCH(QString, before);
    QFETCH(QString, edit);
    QFETCH(QString, text);
    QFETCH(QString, after);
    QFETCH(QString, message);

    const QString camera = row == 0 ? QString() : QStringLiteral("Cam A");
    model_->set_camera_clock(
        camera, {before.section('|', 0, 0).toLatin1(), before.section('|', 1).toLongLong()});
    dialog_cameras dialog(model_);
    QCOMPARE(dialog.rows_.size(), 2);
    const auto &r = dialog.rows_.at(row);
    QCOMPARE(r.camera, camera);
    QString asked;
    dialog.choose_item = [&](QWidget *, const QString &, const QString &,
                             const QStringList &items) {
        asked = items.join(',');
        return 0;
    };
    dialog.ask_text = [&](QWidget *, const QString &, const QString &, const QString &start,
                          bool *ok) {
        asked += ';' + start;
        *ok = true;
        return text;
    };

    if (edit == "zone") {
        r.zone_box->setEditText(text);
        emit r.zone_box->lineEdit()->editingFinished();
    } else if (edit == "correction") {
        r.correction_edit->setText(text);
        emit r.correction_edit->editingFinished();
    } else {
        (edit == "reset" ? r.reset_button : r.reference_button)->click();
    }

    const camera_clock clock = model_->clock_of(camera);
    QCOMPARE(QString::fromLatin1(clock.zone) + '|' + QString::number(clock.correction_s), after);
    const QString shown = dialog.findChild<QLabel *>("message_label")->text();
    QVERIFY2(message.isEmpty() ? shown.isEmpty() : shown.contains(message), qPrintable(shown));
    // The fields show the clock in force, refused input or not.
    QCOMPARE(r.correction_edit->text(), photo_time::correction_text(clock.correction_s));
    QCOMPARE(r.reset_button->isEnabled(), !clock.is_default());
    // What is in force is what is stored, but for a refusal, which stores nothing.
    if (message.isEmpty())
        QCOMPARE(camera_clock_settings::load().value(camera), clock);
    if (edit == "reference" && row == 1)
        QCOMPARE(asked, "a.jpg   2021-06-01 12:00:00;2021-06-01 12:00:00");
}

// A stored clock comes back; stored values that don't read are dropped with
// a warning and the rest of their entry kept.
void tst_dialog_cameras::stored_clocks_come_back()
{
    camera_clock_settings::save("A", {"Asia/Tokyo", 120});
    camera_clock_settings::save("B", {"", -60});
    camera_clock_settings::save("B", camera_clock());
    QSettings settings;
    settings.beginWriteArray("camera_clocks");
    settings.setArrayIndex(1);
    settings.setValue("camera", "C");
    settings.setValue("zone", "Mars/Olympus");
    settings.setValue("correction_s", "3 min");
    settings.setArrayIndex(2);
    settings.setValue("camera", "D");
    settings.setValue("zone", "UTC-03:00");
    settings.setValue("correction_s", 400000000);
    settings.endArray();
    settings.sync();

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("time zone 'Mars/Olympus'.*\"C\""));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("correction '3 min'.*\"C\""));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("correction '400000000'.*\"D\""));
    const QHash<QString, camera_clock> clocks = camera_clock_settings::load();
    QCOMPARE(clocks.size(), 2);
    QCOMPARE(clocks.value("A"), (camera_clock{"Asia/Tokyo", 120}));
    QCOMPARE(clocks.value("D"), (camera_clock{"UTC-03:00", 0}));
}

QTEST_MAIN(tst_dialog_cameras)
#include "tst_dialog_cameras.moc"
