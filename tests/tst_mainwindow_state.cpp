#include "mainwindow.h"

#include "model/table_data_model.h"

#include <vn/button_dark.h>
#include <vn/lineedit.h>
#include <vn/radio.h>

#include <QtTest>

#include <QButtonGroup>
#include <QLabel>
#include <QSettings>
#include <QStandardPaths>

// Stored state in a real settings file under the test's own XDG_CONFIG_HOME.
class tst_mainwindow_state : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void first_start();
    void restored_mode_data();
    void restored_mode();
    void radio_click_is_stored_at_once();
    void file_dialog_folder_data();
    void file_dialog_folder();
    void source_controls_data();
    void source_controls();
    void shortcuts_data();
    void shortcuts();
};

void tst_mainwindow_state::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
    const QString home = qEnvironmentVariable("XDG_CONFIG_HOME");
    QVERIFY2(!home.isEmpty(), "the test must run with a settings folder of its own");
    QVERIFY(QSettings().fileName().startsWith(home));
}

void tst_mainwindow_state::init()
{
    QSettings settings;
    settings.clear();
    settings.sync();
}

void tst_mainwindow_state::first_start()
{
    MainWindow window;
    QVERIFY(window.closest_radio->isChecked());
    QCOMPARE(window.mode_group->checkedId(), 2);
    QCOMPARE(window.sync_order, 2u);
    QCOMPARE(window.model->sync_order(), 2);
    QCOMPARE(window.max_time_edit->text(), QStringLiteral("5"));
    QCOMPARE(window.gpx_max_time_edit->text(), QStringLiteral("5"));
    QCOMPARE(window.last_image_load_path,
             QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    QCOMPARE(window.last_gpx_load_path,
             QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    QVERIFY(!window.sync_button->isEnabled());
    QVERIFY(!window.undo_button->isEnabled());
    QVERIFY(window.warning_label->isHidden());
    QCOMPARE(window.minimumSize(), QSize(925, 600));
    // Constructing writes nothing: state is stored when it changes.
    QVERIFY(QSettings().allKeys().isEmpty());
}

void tst_mainwindow_state::restored_mode_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("checked_id");
    QTest::addColumn<int>("model_order");
    QTest::addRow("previous") << QVariant(0u) << 0 << 0;
    QTest::addRow("following") << QVariant(1u) << 1 << 1;
    QTest::addRow("typed position") << QVariant(3u) << 3 << 3;
    QTest::addRow("gpx") << QVariant(4u) << 4 << 4;
    // Checks no radio of its own: the first one, checked while building, stays.
    QTest::addRow("unknown mode") << QVariant(7u) << 0 << 7;
    QTest::addRow("not a number") << QVariant(QStringLiteral("x")) << 0 << 0;
}

void tst_mainwindow_state::restored_mode()
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

void tst_mainwindow_state::radio_click_is_stored_at_once()
{
    {
        MainWindow window;
        window.gpx_radio->click();
        QCOMPARE(QSettings().value(QStringLiteral("sync_order")).toUInt(), 4u);
        QCOMPARE(window.model->sync_order(), 4);
        // The three keys go together.
        QCOMPARE(QSettings().value(QStringLiteral("last_image_load_path")).toString(),
                 QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
        QVERIFY(QSettings().contains(QStringLiteral("last_gpx_load_path")));
    }
    // Restart: the GPX mode is back with its controls on, and no track is set,
    // so nothing can be assigned until one is chosen.
    MainWindow window;
    QVERIFY(window.gpx_radio->isChecked());
    QVERIFY(window.load_gpx_button->isEnabled());
    QVERIFY(window.gpx_max_time_edit->isEnabled());
    QVERIFY(window.gpx_name_edit->isEnabled());
    QVERIFY(!window.max_time_edit->isEnabled());
    QVERIFY(!window.latitude_edit->isEnabled());
    QVERIFY(!window.model->has_track());
    QCOMPARE(window.gpx_name_edit->text(), QString());
    QCOMPARE(window.gpx_max_time_edit->text(), QStringLiteral("5"));
}

void tst_mainwindow_state::file_dialog_folder_data()
{
    QTest::addColumn<QStringList>("chosen");
    QTest::addColumn<QString>("stored_folder"); // empty: the key stays unwritten
    QTest::addRow("cancelled") << QStringList() << QString();
    QTest::addRow("two files") << QStringList{"/nowhere/a/x.jpg", "/nowhere/b/y.jpg"}
                               << "/nowhere/a";
}

void tst_mainwindow_state::file_dialog_folder()
{
    QFETCH(QStringList, chosen);
    QFETCH(QString, stored_folder);

    MainWindow window;
    QString asked_folder;
    QString asked_filter;
    window.choose_image_files = [&](QWidget *, const QString &, const QString &folder,
                                    const QString &filter) {
        asked_folder = folder;
        asked_filter = filter;
        return chosen;
    };
    window.on_load_clicked();

    QCOMPARE(asked_folder, QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    QVERIFY(asked_filter.startsWith(QStringLiteral("All supported files (*.360 *.3g2 ")));
    QCOMPARE(QSettings().value(QStringLiteral("last_image_load_path")).toString(), stored_folder);
    if (stored_folder.isEmpty())
        return;
    MainWindow restarted;
    restarted.choose_image_files = [&](QWidget *, const QString &, const QString &folder,
                                       const QString &) {
        asked_folder = folder;
        return QStringList();
    };
    restarted.on_load_clicked();
    QCOMPARE(asked_folder, stored_folder);
}

void tst_mainwindow_state::source_controls_data()
{
    QTest::addColumn<int>("order");
    QTest::addColumn<bool>("position_on");
    QTest::addColumn<bool>("photo_limit_on");
    QTest::addColumn<bool>("gpx_on");
    QTest::addRow("previous") << 0 << false << true << false;
    QTest::addRow("following") << 1 << false << true << false;
    QTest::addRow("closest") << 2 << false << true << false;
    QTest::addRow("typed position") << 3 << true << false << false;
    QTest::addRow("gpx") << 4 << false << false << true;
}

void tst_mainwindow_state::source_controls()
{
    QFETCH(int, order);
    QFETCH(bool, position_on);
    QFETCH(bool, photo_limit_on);
    QFETCH(bool, gpx_on);

    MainWindow window;
    // Start from a mode that differs in every control from the one under test.
    const int other = order == 3 ? 4 : 3;
    window.mode_group->button(other)->click();
    window.mode_group->button(order)->click();

    QCOMPARE(window.latitude_edit->isEnabled(), position_on);
    QCOMPARE(window.longitude_edit->isEnabled(), position_on);
    QCOMPARE(window.max_time_edit->isEnabled(), photo_limit_on);
    QCOMPARE(window.gpx_max_time_edit->isEnabled(), gpx_on);
    QCOMPARE(window.gpx_name_edit->isEnabled(), gpx_on);
    QCOMPARE(window.load_gpx_button->isEnabled(), gpx_on);
    QCOMPARE(window.model->sync_order(), order);
    QCOMPARE(QSettings().value(QStringLiteral("sync_order")).toInt(), order);
}

void tst_mainwindow_state::shortcuts_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("button");
    // Ctrl+O opens the file dialog even while the load button is disabled.
    QTest::addRow("ctrl+o") << int(Qt::Key_O) << int(Qt::ControlModifier) << "load_button";
    QTest::addRow("f1") << int(Qt::Key_F1) << int(Qt::NoModifier) << "help_button";
    QTest::addRow("ctrl+?") << int(Qt::Key_Question) << int(Qt::ControlModifier) << "help_button";
}

void tst_mainwindow_state::shortcuts()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, button);

    MainWindow window;
    int dialogs = 0;
    window.choose_image_files = [&](QWidget *, const QString &, const QString &, const QString &) {
        ++dialogs;
        return QStringList();
    };
    window.load_button->setEnabled(false);
    // The help page would open a browser: only the button's signal is watched.
    disconnect(window.help_button, nullptr, &window, nullptr);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    auto *target = window.findChild<QAbstractButton *>(button);
    QVERIFY(target);
    QSignalSpy clicked(target, &QAbstractButton::clicked);
    QTest::keyClick(&window, Qt::Key(key), Qt::KeyboardModifiers(modifiers));

    QCOMPARE(clicked.count(), 1);
    QCOMPARE(dialogs, button == QLatin1String("load_button") ? 1 : 0);
}

QTEST_MAIN(tst_mainwindow_state)
#include "tst_mainwindow_state.moc"
