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

// An edit ("zone", "correction", "reference" or "reset") with `text` in a
// row, from the clock `before` ("<zone>|<seconds>") to `after`, and the
// message shown.
struct edit_row
{
    const char *tag;
    int row;
    const char *before, *edit, *text, *after, *message;
};
Q_DECLARE_METATYPE(edit_row)

// Runs with TZ=UTC. Row 0 is the unknown camera, whose photo records 13:00
// +02:00; row 1 "Cam A", whose photo shows 12:00 and records no zone.
class tst_dialog_cameras : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
        QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
        const QString date = "rec_year=2021;rec_month=06;rec_day=01;rec_minute=00;rec_second=00;";
        for (const QString &spec : {"/p/a.jpg|" + date + "rec_hour=12;camera=Cam A",
                                    "/p/b.jpg|" + date + "rec_hour=13;exif_timezone=+02:00"}) {
            exif_tag_map &values = exif_cache::instance()->values[spec.section('|', 0, 0)];
            for (const QString &pair : spec.section('|', 1).split(';'))
                values.insert(pair.section('=', 0, 0), pair.section('=', 1));
        }
    }

    void edits_data()
    {
        QTest::addColumn<edit_row>("edit");
        const edit_row rows[] = {
            {"zone", 1, "|0", "zone", "Asia/Tokyo", "Asia/Tokyo|0", ""},
            {"computer's zone", 1, "Asia/Tokyo|60", "zone", "This computer's zone", "|60", ""},
            {"unknown zone", 1, "Asia/Tokyo|0", "zone", "Mars/Olympus", "Asia/Tokyo|0",
             "not a time zone known here"},
            {"correction", 1, "|0", "correction", "-0:03:00", "|-180", ""},
            {"beyond ten years", 1, "|0", "correction", "3654d", "|0", "more than ten years"},
            // The clock in the photo showed 12:03:30 when the camera recorded 12:00.
            {"reference", 1, "|0", "reference", "2021-06-01 12:03:30", "|210", ""},
            // Read in the photo's own zone, whatever the camera's; the correction
            // in force doesn't count.
            {"own zone", 0, "Asia/Tokyo|500", "reference", "12:58", "Asia/Tokyo|-120", ""},
            {"reference unreadable", 1, "|60", "reference", "noon", "|60", "Can't read the time"},
            {"reset", 1, "Asia/Tokyo|60", "reset", "", "|0", ""},
        };
        for (const edit_row &r : rows)
            QTest::newRow(r.tag) << r;
    }

    void edits()
    {
        QFETCH(edit_row, edit);
        const QString before(edit.before), text(edit.text), message(edit.message);
        const int row = edit.row;

        QSettings().clear();
        table_data_model model;
        model.add_cached_file("/p/a.jpg");
        model.add_cached_file("/p/b.jpg");
        const QString camera = row == 0 ? QString() : QStringLiteral("Cam A");
        model.set_camera_clock(
            camera, {before.section('|', 0, 0).toLatin1(), before.section('|', 1).toLongLong()});
        dialog_cameras dialog(&model);
        const auto &r = dialog.rows_.at(row);
        QString asked;
        dialog.choose_item = [&](auto &&, auto &&, auto &&, const QStringList &items) {
            asked = items.join(',');
            return 0;
        };
        dialog.ask_text = [&](auto &&, auto &&, auto &&, const QString &start, bool *ok) {
            asked += ';' + start;
            *ok = true;
            return text;
        };

        if (edit.edit == QLatin1String("zone")) {
            r.zone_box->setEditText(text);
            emit r.zone_box->lineEdit()->editingFinished();
        } else if (edit.edit == QLatin1String("correction")) {
            r.correction_edit->setText(text);
            emit r.correction_edit->editingFinished();
        } else {
            (edit.edit == QLatin1String("reset") ? r.reset_button : r.reference_button)->click();
        }

        const camera_clock clock = model.clock_of(camera);
        QCOMPARE(QString::fromLatin1(clock.zone) + '|' + QString::number(clock.correction_s),
                 QString(edit.after));
        const QString shown = dialog.findChild<QLabel *>("message_label")->text();
        QVERIFY2(message.isEmpty() ? shown.isEmpty() : shown.contains(message), qPrintable(shown));
        // The field shows the clock in force, after a refusal too, and the store
        // holds what is in force once accepted.
        QCOMPARE(r.correction_edit->text(), photo_time::correction_text(clock.correction_s));
        QCOMPARE(r.reset_button->isEnabled(), !clock.is_default());
        if (message.isEmpty())
            QCOMPARE(camera_clock_settings::load().value(camera), clock);
        if (edit.edit == QLatin1String("reference") && row == 1)
            QCOMPARE(asked, "a.jpg   2021-06-01 12:00:00;2021-06-01 12:00:00");
    }

    // Stored values that don't read are dropped with a warning, the rest of
    // their entry kept; the default clock removes an entry.
    void stored_clocks_come_back()
    {
        QSettings().clear();
        camera_clock_settings::save("A", {"Asia/Tokyo", 120});
        camera_clock_settings::save("B", {"UTC-03:00", -60});
        camera_clock_settings::save("C", {"", 5});
        camera_clock_settings::save("C", camera_clock());
        QSettings settings;
        settings.beginWriteArray("camera_clocks");
        settings.setArrayIndex(1);
        settings.setValue("zone", "Mars/Olympus");
        settings.setValue("correction_s", "3 min");
        settings.endArray();

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("time zone 'Mars/Olympus'.*\"B\""));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("correction '3 min'.*\"B\""));
        const QHash<QString, camera_clock> clocks = camera_clock_settings::load();
        QCOMPARE(clocks.keys(), QStringList{"A"});
        QCOMPARE(clocks.value("A"), (camera_clock{"Asia/Tokyo", 120}));
    }
};

QTEST_MAIN(tst_dialog_cameras)
#include "tst_dialog_cameras.moc"
