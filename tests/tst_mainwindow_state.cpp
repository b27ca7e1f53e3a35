#include "mainwindow.h"

#include "camera_clock_settings.h"
#include "model/table_data_model.h"

#include <vn/button_dark.h>
#include <vn/checkbox.h>
#include <vn/dialog_about.h>
#include <vn/lineedit.h>
#include <vn/radio.h>

#include <QtTest>

#include <QButtonGroup>
#include <QLabel>
#include <QSettings>
#include <QStandardPaths>

namespace {
QString pictures()
{
    return QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
}
} // namespace

// Stored state in a real settings file under the test's own XDG_CONFIG_HOME.
class tst_mainwindow_state : public QObject
{
    Q_OBJECT

    // Which source controls are on, "1" or "0" each: latitude and longitude,
    // the photo time limit, then the GPX limit, interpolation, altitude, name and load.
    static QString controls(const MainWindow &w)
    {
        const QWidget *const all[] = {w.latitude_edit,     w.longitude_edit,    w.max_time_edit,
                                      w.gpx_max_time_edit, w.interpolate_check, w.altitude_check,
                                      w.gpx_name_edit,     w.load_gpx_button};
        QString on;
        for (const QWidget *c : all)
            on += c->isEnabled() ? '1' : '0';
        return on;
    }

    // Makes the window's file dialog return `chosen` and note the folder it was opened in.
    static void fake_file_dialog(MainWindow &window, QString *folder,
                                 const QStringList &chosen = {})
    {
        window.choose_image_files = [=](auto &&, auto &&, const QString &in, auto &&) {
            *folder = in;
            return chosen;
        };
    }

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
        QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
        const QString home = qEnvironmentVariable("XDG_CONFIG_HOME");
        QVERIFY2(!home.isEmpty(), "the test must run with a settings folder of its own");
        QVERIFY(QSettings().fileName().startsWith(home));
    }

    void init() { QSettings().clear(); }

    void first_start()
    {
        MainWindow window;
        QVERIFY(window.closest_radio->isChecked());
        QCOMPARE(window.model->sync_order(), 2);
        QCOMPARE(window.max_time_edit->text(), QStringLiteral("5"));
        QCOMPARE(window.gpx_max_time_edit->text(), QStringLiteral("5"));
        QCOMPARE(window.last_gpx_load_path,
                 QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
        QVERIFY(!window.sync_button->isEnabled() && !window.undo_button->isEnabled());
        QVERIFY(window.warning_label->isHidden());
        // Constructing writes nothing: state is stored when it changes.
        QVERIFY(QSettings().allKeys().isEmpty());
    }

    void restored_mode_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("checked_id");
        QTest::addColumn<int>("model_order");
        // Checks no radio of its own: the first one, checked while building, stays.
        QTest::addRow("unknown mode") << QVariant(7u) << 0 << 7;
        QTest::addRow("not a number") << QVariant(QStringLiteral("x")) << 0 << 0;
    }

    void restored_mode()
    {
        QFETCH(QVariant, stored);
        QFETCH(int, checked_id);
        QFETCH(int, model_order);
        QSettings().setValue(QStringLiteral("sync_order"), stored);

        MainWindow window;
        QCOMPARE(window.mode_group->checkedId(), checked_id);
        QCOMPARE(window.model->sync_order(), model_order);
        QCOMPARE(int(window.sync_order), model_order);
    }

    void file_dialog_folder_data()
    {
        QTest::addColumn<QStringList>("chosen");
        QTest::addColumn<QString>("stored_folder"); // empty: the key stays unwritten
        QTest::addRow("cancelled") << QStringList() << QString();
        QTest::addRow("two files")
            << QStringList{"/nowhere/a/x.jpg", "/nowhere/b/y.jpg"} << "/nowhere/a";
    }

    void file_dialog_folder()
    {
        QFETCH(QStringList, chosen);
        QFETCH(QString, stored_folder);

        QString asked_folder;
        MainWindow window;
        fake_file_dialog(window, &asked_folder, chosen);
        window.on_load_clicked();
        QCOMPARE(asked_folder, pictures());
        QCOMPARE(QSettings().value(QStringLiteral("last_image_load_path")).toString(),
                 stored_folder);
        if (stored_folder.isEmpty())
            return;
        MainWindow restarted;
        fake_file_dialog(restarted, &asked_folder);
        restarted.on_load_clicked();
        QCOMPARE(asked_folder, stored_folder);
    }

    void source_controls_data()
    {
        QTest::addColumn<int>("order");
        QTest::addColumn<QString>("on"); // as controls() gives them
        QTest::addRow("previous") << 0 << "00100000";
        QTest::addRow("following") << 1 << "00100000";
        QTest::addRow("typed position") << 3 << "11000000";
        QTest::addRow("gpx") << 4 << "00011111";
    }

    // A mode is stored at its click and comes back, with its controls, at the next start.
    void source_controls()
    {
        QFETCH(int, order);
        QFETCH(QString, on);
        {
            MainWindow window;
            // Start from a mode that differs in every control from the one under test.
            window.mode_group->button(order == 3 ? 4 : 3)->click();
            window.mode_group->button(order)->click();
            QCOMPARE(controls(window), on);
            QCOMPARE(window.model->sync_order(), order);
            QCOMPARE(QSettings().value(QStringLiteral("sync_order")).toInt(), order);
            // The three keys go together.
            QCOMPARE(QSettings().value(QStringLiteral("last_image_load_path")).toString(),
                     pictures());
            QVERIFY(QSettings().contains(QStringLiteral("last_gpx_load_path")));
        }
        MainWindow window;
        QCOMPARE(window.mode_group->checkedId(), order);
        QCOMPARE(controls(window), on);
        QCOMPARE(window.model->sync_order(), order);
    }

    void shortcuts_data()
    {
        QTest::addColumn<QKeySequence>("keys");
        QTest::addColumn<QString>("button");
        // Ctrl+O opens the file dialog even while the load button is disabled.
        QTest::newRow("ctrl+o") << QKeySequence("Ctrl+O") << "load_button";
        QTest::newRow("ctrl+m") << QKeySequence("Ctrl+M") << "map_button";
        QTest::newRow("f1") << QKeySequence("F1") << "help_button";
        QTest::newRow("ctrl+?") << QKeySequence("Ctrl+?") << "help_button";
    }

    void shortcuts()
    {
        QFETCH(QKeySequence, keys);
        QFETCH(QString, button);

        MainWindow window;
        QString dialog_folder;
        fake_file_dialog(window, &dialog_folder);
        window.load_button->setEnabled(false);
        // The help page would open a browser: only the button's signal is watched.
        disconnect(window.help_button, nullptr, &window, nullptr);
        disconnect(window.map_button, nullptr, &window, nullptr); // tst_map_window opens the map
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));

        auto *target = window.findChild<QAbstractButton *>(button);
        QVERIFY(target);
        QSignalSpy clicked(target, &QAbstractButton::clicked);
        QTest::keySequence(&window, keys);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(dialog_folder.isEmpty(), button != QLatin1String("load_button"));
    }

    // The About box is modal and made at each click.
    void about_button_opens_about_box()
    {
        MainWindow window;
        window.show();
        bool seen_about = false;
        QTimer::singleShot(0, this, [&] {
            QWidget *modal = QApplication::activeModalWidget();
            seen_about = qobject_cast<vn::dialog_about *>(modal) != nullptr;
            if (modal)
                modal->close();
        });
        emit window.about_button->clicked();
        QVERIFY(seen_about);
        QVERIFY(!window.findChild<vn::dialog_about *>()); // gone after the click
    }

    void stored_camera_clocks_reach_the_model()
    {
        camera_clock_settings::save(QStringLiteral("Cam A"), {"Asia/Tokyo", -180});
        MainWindow window;
        QCOMPARE(window.model->clock_of(QStringLiteral("Cam A")),
                 (camera_clock{"Asia/Tokyo", -180}));
    }
};

QTEST_MAIN(tst_mainwindow_state)
#include "tst_mainwindow_state.moc"
