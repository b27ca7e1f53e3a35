// The About box and the third-party list, offscreen. Modal loops are ended by
// timers that close the dialog once it shows, so no test waits on a person.
#include <vn/clickable_label.h>
#include <vn/dialog_3rd_part_lib_info.h>
#include <vn/dialog_about.h>
#include <vn/image_map.h>
#include <vn/label.h>

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QRegularExpression>
#include <QScreen>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTimer>
#include <QtTest>

#include <functional>

namespace {
const QString head_sheet = QStringLiteral("#logobg{ background-image:url(:/images/Head.png);}");

QStringList label_texts(const QWidget &widget)
{
    QStringList texts;
    for (const QLabel *l : widget.findChildren<QLabel *>())
        texts << l->text();
    return texts;
}

// Runs `act` on the first visible modal dialog of type T once one shows,
// then closes it with `result`. The timer stops after 5 s in any case.
template <typename T>
void close_modal_when_shown(QObject *context, std::function<void(T *)> act, int result)
{
    auto *timer = new QTimer(context);
    auto *deadline = new QElapsedTimer;
    deadline->start();
    QObject::connect(timer, &QTimer::timeout, context, [timer, deadline, act, result] {
        auto *dialog = qobject_cast<T *>(QApplication::activeModalWidget());
        if (!dialog && deadline->elapsed() < 5000)
            return;
        timer->stop();
        timer->deleteLater();
        delete deadline;
        if (!dialog)
            return;
        act(dialog);
        dialog->done(result);
    });
    timer->start(10);
}
} // namespace

class tst_dialog_about : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void logo_size_data();
    void logo_size();
    void image_map_lookup_data();
    void image_map_lookup();
    void fixed_size_data();
    void fixed_size();
    void version_and_maker_lines_data();
    void version_and_maker_lines();
    void third_party_entries_data();
    void third_party_entries();
    void entry_with_file_data();
    void entry_with_file();
    void link_calls_the_callable_data();
    void link_calls_the_callable();
    void default_list_opens_modal();
    void centring_data();
    void centring();
    void show_centred_runs_modal();

private:
    QTemporaryDir dir_;
};

void tst_dialog_about::initTestCase()
{
    QVERIFY(dir_.isValid());
    // The About box takes its logo from the image map; a picture of known
    // size makes the header's arithmetic checkable.
    QImage logo(300, 64, QImage::Format_ARGB32);
    logo.fill(Qt::darkCyan);
    const QString path = dir_.filePath(QStringLiteral("logo.png"));
    QVERIFY(logo.save(path));
    vn::image_map::set(QStringLiteral("image_logo"), path);
    QCOMPARE(vn::dialog_about::logo().size(), QSize(300, 64));
}

void tst_dialog_about::logo_size_data()
{
    QTest::addColumn<QSize>("image");
    QTest::addColumn<int>("height");
    QTest::addColumn<QSize>("expected");

    QTest::addRow("wide logo, truncated") << QSize(300, 64) << 87 << QSize(407, 87);
    QTest::addRow("square") << QSize(50, 50) << 20 << QSize(20, 20);
    QTest::addRow("tall") << QSize(10, 40) << 39 << QSize(9, 39);
    QTest::addRow("width exactly at the limit") << QSize(999999, 1) << 1 << QSize(999999, 1);
    QTest::addRow("width just above the limit") << QSize(1000000, 10) << 10 << QSize(999999, 9);
    QTest::addRow("far above the limit") << QSize(4000000, 1000) << 1000 << QSize(999999, 249);
    QTest::addRow("overflowing int") << QSize(2000000000, 2) << 100000 << QSize(999999, 0);
    QTest::addRow("no image") << QSize() << 87 << QSize(0, 87);
    QTest::addRow("margin above the header") << QSize(300, 64) << -3 << QSize(0, 0);
}

void tst_dialog_about::logo_size()
{
    QFETCH(QSize, image);
    QFETCH(int, height);
    QFETCH(QSize, expected);
    QCOMPARE(vn::dialog_about::logo_size(image, height), expected);
}

void tst_dialog_about::image_map_lookup_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("expected");

    QTest::addRow("stored name") << "image_test"
                                 << "image_test"
                                 << "/stored.png";
    QTest::addRow("other name takes the default") << "image_test"
                                                  << "image_other"
                                                  << ":/default.png";
    QTest::addRow("case counts") << "image_test"
                                 << "Image_Test"
                                 << ":/default.png";
}

void tst_dialog_about::image_map_lookup()
{
    QFETCH(QString, stored);
    QFETCH(QString, asked);
    QFETCH(QString, expected);

    vn::image_map::set(stored, QStringLiteral("/stored.png"));
    QCOMPARE(vn::image_map::path(asked, QStringLiteral(":/default.png")), expected);
    vn::image_map::remove(stored);
    QCOMPARE(vn::image_map::path(stored, QStringLiteral(":/default.png")),
             QStringLiteral(":/default.png"));
}

void tst_dialog_about::fixed_size_data()
{
    QTest::addColumn<bool>("show_website");
    QTest::addColumn<int>("header_height");
    QTest::addColumn<int>("margin");

    QTest::addRow("main window's values") << true << 97 << 10;
    QTest::addRow("without the site") << false << 97 << 10;
    QTest::addRow("low header") << true << 40 << 4;
    QTest::addRow("no margin") << true << 60 << 0;
}

void tst_dialog_about::fixed_size()
{
    QFETCH(bool, show_website);
    QFETCH(int, header_height);
    QFETCH(int, margin);

    vn::dialog_about dialog(nullptr, show_website, head_sheet, header_height, margin);
    QCOMPARE(dialog.minimumSize(), dialog.maximumSize());
    QCOMPARE(dialog.height(), dialog.sizeHint().height());
    QCOMPARE(dialog.width(), int(dialog.sizeHint().width() * 1.2));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("About"));
    const Qt::WindowFlags flags = dialog.windowFlags();
    QVERIFY(!(flags & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint |
                       Qt::WindowContextHelpButtonHint)));

    auto *header = dialog.findChild<QWidget *>(QStringLiteral("logobg"));
    QVERIFY(header);
    QCOMPARE(header->height(), header_height);
    QCOMPARE(header->styleSheet(), head_sheet);
    auto *logo = header->findChild<vn::label *>();
    QVERIFY(logo);
    QCOMPARE(logo->size(), vn::dialog_about::logo_size(QSize(300, 64), header_height - margin));
    QVERIFY(logo->paint);

    QCOMPARE(bool(dialog.findChild<QLabel *>(QStringLiteral("site_link"))), show_website);
    QCOMPARE(label_texts(dialog).contains(QStringLiteral("Webseite:")), show_website);
}

void tst_dialog_about::version_and_maker_lines_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("expected");

    QTest::addRow("release") << "2.1.0"
                             << "2.1.0 - 64 Bit";
    QTest::addRow("pre-release") << "3.0.0-rc1"
                                 << "3.0.0-rc1 - 64 Bit";
}

void tst_dialog_about::version_and_maker_lines()
{
    QFETCH(QString, version);
    QFETCH(QString, expected);
    QVERIFY2(sizeof(void *) == 8, "the version line names the word size of a 64-bit build");

    const QString old_version = QCoreApplication::applicationVersion();
    QCoreApplication::setApplicationVersion(version);
    vn::dialog_about dialog(nullptr, true, head_sheet, 97, 10);
    QCoreApplication::setApplicationVersion(old_version);

    const QStringList texts = label_texts(dialog);
    QVERIFY(texts.contains(QStringLiteral("Version:")));
    QVERIFY2(texts.contains(expected), qUtf8Printable(texts.join(QLatin1Char('|'))));

    const int year = QDateTime::currentDateTimeUtc().date().year();
    auto *maker = dialog.findChild<QLabel *>(QStringLiteral("maker_line"));
    QVERIFY(maker);
    QVERIFY2(maker->text().contains(QStringLiteral("2013-%1 Orvane").arg(year)),
             qUtf8Printable(maker->text()));

    auto *site = dialog.findChild<QLabel *>(QStringLiteral("site_link"));
    QVERIFY(site);
    QVERIFY(site->openExternalLinks());
    QVERIFY(site->text().contains(QLatin1String("href=\"https://orvane.example/\"")));
    QVERIFY(site->text().contains(QLatin1String("#728a84")));
}

void tst_dialog_about::third_party_entries_data()
{
    QTest::addColumn<bool>("exiftool");
    QTest::addColumn<bool>("freeimage");
    QTest::addColumn<QStringList>("expected");

    // Only what the program really uses: it links no FreeImage and no
    // Little CMS, whatever the caller's flag says.
    const QString qt = QStringLiteral("Qt ") + QLatin1String(qVersion());
    QTest::addRow("main window's flags")
        << true << false << QStringList{qt, "Exiftool", "GNU FreeFont"};
    QTest::addRow("neither") << false << false << QStringList{qt, "GNU FreeFont"};
    QTest::addRow("FreeImage asked for")
        << true << true << QStringList{qt, "Exiftool", "GNU FreeFont"};
    QTest::addRow("FreeImage only") << false << true << QStringList{qt, "GNU FreeFont"};
}

void tst_dialog_about::third_party_entries()
{
    QFETCH(bool, exiftool);
    QFETCH(bool, freeimage);
    QFETCH(QStringList, expected);

    QStringList names;
    for (const vn::dialog_3rd_part_lib_info::entry &e :
         vn::dialog_about::default_entries(exiftool, freeimage)) {
        names << e.name;
        QVERIFY2(!e.text.isEmpty(), qUtf8Printable(e.name));
        QVERIFY2(e.file.isEmpty(), qUtf8Printable(e.name));
        QVERIFY(!e.text.contains(QLatin1String("FreeImage")));
        QVERIFY(!e.text.contains(QLatin1String("Little CMS")));
    }
    QCOMPARE(names, expected);
    // the running Qt, not the one some text was written for
    QVERIFY(names.first().startsWith(QStringLiteral("Qt %1.").arg(QT_VERSION_MAJOR)));
}

void tst_dialog_about::entry_with_file_data()
{
    QTest::addColumn<QByteArray>("content"); // null: no such file
    QTest::addColumn<QString>("shown");

    QTest::addRow("plain text") << QByteArray("MIT licence\nline two\n")
                                << "MIT licence\nline two\n";
    QTest::addRow("UTF-8") << QByteArray("Gr\xc3\xbc\xc3\x9f"
                                         "e")
                           << QStringLiteral("Grüße");
    QTest::addRow("NUL ends the text") << QByteArray("before\0after", 12) << "before";
    QTest::addRow("missing file") << QByteArray() << QString();
}

void tst_dialog_about::entry_with_file()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, shown);

    QString path = dir_.filePath(QStringLiteral("no such licence.txt"));
    if (!content.isNull()) {
        path = dir_.filePath(QString::fromLatin1(QTest::currentDataTag()) + ".txt");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QGuiApplication::setApplicationDisplayName(QStringLiteral("Loxmere"));
    vn::dialog_3rd_part_lib_info dialog;
    if (content.isNull())
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Could not open '.*no such licence"));
    dialog.add_entry({QStringLiteral("Some library"), QStringLiteral("What it is."), path});

    const QStringList texts = label_texts(dialog);
    QCOMPARE(texts.first(),
             QStringLiteral("Loxmere uses the following open source and/or 3rd party libraries:"));
    QCOMPARE(texts.mid(1, 2), QStringList({"Some library", "What it is."}));
    auto *edit = dialog.findChild<QTextEdit *>();
    if (content.isNull()) {
        QVERIFY(!edit);
        QCOMPARE(texts.size(), 4);
        QVERIFY2(texts.last().contains(path), qUtf8Printable(texts.last()));
    } else {
        QVERIFY(edit);
        QVERIFY(edit->isReadOnly());
        QCOMPARE(edit->toPlainText(), shown);
        QCOMPARE(texts.size(), 3);
    }
}

void tst_dialog_about::link_calls_the_callable_data()
{
    QTest::addColumn<int>("button"); // Qt::MouseButton
    QTest::addColumn<int>("calls");

    QTest::addRow("left click") << int(Qt::LeftButton) << 1;
    QTest::addRow("right click") << int(Qt::RightButton) << 0;
}

void tst_dialog_about::link_calls_the_callable()
{
    QFETCH(int, button);
    QFETCH(int, calls);

    vn::dialog_about dialog(nullptr, true, head_sheet, 97, 10);
    auto *link = dialog.findChild<vn::clickable_label *>(QStringLiteral("third_party_link"));
    QVERIFY(link);
    QCOMPARE(link->text(), QStringLiteral("Click here for 3rd party library information"));
    QCOMPARE(link->cursor().shape(), Qt::PointingHandCursor);

    int count = 0;
    QWidget *passed = nullptr;
    dialog.third_party_libs = [&](QWidget *parent) {
        ++count;
        passed = parent;
    };
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTest::mouseClick(link, Qt::MouseButton(button));
    QCOMPARE(count, calls);
    QCOMPARE(passed, calls ? static_cast<QWidget *>(&dialog) : nullptr);

    // without a callable a click does nothing (and doesn't crash)
    dialog.third_party_libs = nullptr;
    QTest::mouseClick(link, Qt::MouseButton(button));
}

// The stored callable builds the list as a modal dialog over the About box
// and returns once it is closed.
void tst_dialog_about::default_list_opens_modal()
{
    vn::dialog_about about(nullptr, true, head_sheet, 97, 10);
    about.default_3rdparty_libs(true, false);
    QVERIFY(about.third_party_libs);

    QStringList seen;
    QWidget *parent = nullptr;
    bool fixed = false;
    close_modal_when_shown<vn::dialog_3rd_part_lib_info>(
        this,
        [&](vn::dialog_3rd_part_lib_info *list) {
            seen = label_texts(*list);
            parent = list->parentWidget();
            fixed = list->minimumSize() == list->maximumSize() && list->size() == list->sizeHint();
        },
        QDialog::Rejected);
    about.third_party_libs(&about);

    QCOMPARE(parent, static_cast<QWidget *>(&about));
    QVERIFY(fixed);
    QVERIFY(seen.contains(QStringLiteral("Qt ") + QLatin1String(qVersion())));
    QVERIFY(seen.contains(QStringLiteral("Exiftool")));
    QVERIFY(seen.contains(QStringLiteral("GNU FreeFont")));
    QCOMPARE(seen.size(), 1 + 3 * 2); // the heading, then name and text of each
}

void tst_dialog_about::centring_data()
{
    QTest::addColumn<QRect>("parent"); // null: no parent
    QTest::addColumn<bool>("centred");

    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QTest::addRow("parent on the whole screen") << screen << true;
    QTest::addRow("parent in the middle")
        << QRect(screen.center() - QPoint(300, 250), QSize(600, 500)) << true;
    QTest::addRow("parent at the right edge")
        << QRect(screen.right() - 60, screen.top() + 100, 100, 300) << false;
    QTest::addRow("parent above the top") << QRect(screen.left() + 100, -400, 500, 500) << false;
    QTest::addRow("small parent in a corner")
        << QRect(screen.topLeft() + QPoint(5, 5), QSize(40, 40)) << false;
    QTest::addRow("no parent") << QRect() << false;
}

// A centred rectangle that doesn't fit on the screen leaves the dialog where
// Qt puts it.
void tst_dialog_about::centring()
{
    QFETCH(QRect, parent);
    QFETCH(bool, centred);

    QWidget window;
    if (!parent.isNull())
        window.setGeometry(parent);
    vn::dialog_about dialog(parent.isNull() ? nullptr : &window, true, head_sheet, 97, 10);
    const QRect before = dialog.geometry();

    QCOMPARE(dialog.place_centred(parent.isNull() ? nullptr : &window), centred);
    if (centred) {
        QCOMPARE(dialog.geometry().center(), parent.center());
        QCOMPARE(dialog.size(), before.size());
        QVERIFY(QGuiApplication::primaryScreen()->geometry().contains(dialog.geometry()));
    } else {
        QCOMPARE(dialog.geometry(), before);
    }
}

void tst_dialog_about::show_centred_runs_modal()
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QWidget window;
    window.setGeometry(QRect(screen.center() - QPoint(300, 250), QSize(600, 500)));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    vn::dialog_about about(&window, true, head_sheet, 97, 10);
    Qt::WindowModality modality = Qt::NonModal;
    QPoint centre;
    close_modal_when_shown<vn::dialog_about>(
        this,
        [&](vn::dialog_about *shown) {
            modality = shown->windowModality();
            centre = shown->geometry().center();
        },
        QDialog::Accepted);
    QCOMPARE(about.show_centred(&window), int(QDialog::Accepted));
    QCOMPARE(modality, Qt::ApplicationModal);
    QCOMPARE(centre, window.geometry().center());
    QVERIFY(!about.isVisible());
}

QTEST_MAIN(tst_dialog_about)
#include "tst_dialog_about.moc"
