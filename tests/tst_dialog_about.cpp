// The About box and the third-party list, offscreen. Modal loops are ended by
// timers that close the dialog once it shows, so no test waits on a person.
#include "modal_watcher.h"
#include <vn/clickable_label.h>
#include <vn/dialog_3rd_part_lib_info.h>
#include <vn/dialog_about.h>
#include <vn/image_map.h>
#include <vn/label.h>

#include <QApplication>
#include <QDateTime>
#include <QFile>
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

} // namespace

class tst_dialog_about : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The About box takes its logo from the image map; a picture of known
        // size makes the header's arithmetic checkable.
        QImage logo(300, 64, QImage::Format_ARGB32);
        logo.fill(Qt::darkCyan);
        const QString path = dir_.filePath(QStringLiteral("logo.png"));
        QVERIFY(logo.save(path));
        vn::image_map::set(QStringLiteral("image_logo"), path);
        QCOMPARE(vn::dialog_about::logo().size(), QSize(300, 64));
    }

    void logo_size_data()
    {
        QTest::addColumn<QSize>("image");
        QTest::addColumn<int>("height");
        QTest::addColumn<QSize>("expected");

        QTest::addRow("wide logo, truncated") << QSize(300, 64) << 87 << QSize(407, 87);
        QTest::addRow("width exactly at the limit") << QSize(999999, 1) << 1 << QSize(999999, 1);
        QTest::addRow("width just above the limit") << QSize(1000000, 10) << 10 << QSize(999999, 9);
        QTest::addRow("overflowing int") << QSize(2000000000, 2) << 100000 << QSize(999999, 0);
        QTest::addRow("no image") << QSize() << 87 << QSize(0, 87);
        QTest::addRow("margin above the header") << QSize(300, 64) << -3 << QSize(0, 0);
    }

    void logo_size()
    {
        QFETCH(QSize, image);
        QFETCH(int, height);
        QFETCH(QSize, expected);
        QCOMPARE(vn::dialog_about::logo_size(image, height), expected);
    }

    void layout_data()
    {
        QTest::addColumn<bool>("show_website");
        QTest::addColumn<int>("header_height");
        QTest::addColumn<int>("margin");
        QTest::addColumn<QSize>("logo"); // from the 300 by 64 picture
        QTest::addRow("main window's values") << true << 97 << 10 << QSize(407, 87);
        QTest::addRow("low header, without the site") << false << 40 << 4 << QSize(168, 36);
    }

    void layout()
    {
        QFETCH(bool, show_website);
        QFETCH(int, header_height);
        QFETCH(int, margin);
        QFETCH(QSize, logo);

        const QString old_version = QCoreApplication::applicationVersion();
        QCoreApplication::setApplicationVersion(QStringLiteral("3.0.0-rc1"));
        vn::dialog_about dialog(nullptr, show_website, head_sheet, header_height, margin);
        QCoreApplication::setApplicationVersion(old_version);

        QCOMPARE(dialog.minimumSize(), dialog.maximumSize());
        auto *header = dialog.findChild<QWidget *>(QStringLiteral("logobg"));
        QVERIFY(header);
        QCOMPARE(header->height(), header_height);
        auto *picture = header->findChild<vn::label *>();
        QVERIFY(picture);
        QCOMPARE(picture->size(), logo);

        const QStringList texts = label_texts(dialog);
        QVERIFY2(texts.contains(QStringLiteral("3.0.0-rc1 - 64 Bit")),
                 qUtf8Printable(texts.join('|')));
        auto *maker = dialog.findChild<QLabel *>(QStringLiteral("maker_line"));
        QVERIFY(maker);
        const int year = QDateTime::currentDateTimeUtc().date().year();
        QVERIFY2(maker->text().contains(QStringLiteral("2013-%1 Orvane").arg(year)),
                 qUtf8Printable(maker->text()));
        auto *site = dialog.findChild<QLabel *>(QStringLiteral("site_link"));
        QCOMPARE(bool(site), show_website);
        if (site)
            QVERIFY(site->openExternalLinks() && site->text().contains("https://orvane.example/"));
    }

    void third_party_entries_data()
    {
        QTest::addColumn<bool>("exiftool");
        QTest::addColumn<bool>("freeimage");
        QTest::addColumn<QStringList>("expected");

        // Only what the program really uses: it links no FreeImage, whatever the
        // caller's flag says.
        const QString qt = QStringLiteral("Qt ") + QLatin1String(qVersion());
        QTest::addRow("main window's flags")
            << true << false << QStringList{qt, "Exiftool", "GNU FreeFont"};
        QTest::addRow("FreeImage only") << false << true << QStringList{qt, "GNU FreeFont"};
    }

    void third_party_entries()
    {
        QFETCH(bool, exiftool);
        QFETCH(bool, freeimage);
        QFETCH(QStringList, expected);

        QStringList names;
        for (const auto &e : vn::dialog_about::default_entries(exiftool, freeimage)) {
            names << e.name;
            QVERIFY2(!e.text.isEmpty() && !e.text.contains("FreeImage"), qUtf8Printable(e.name));
        }
        QCOMPARE(names, expected);
    }

    void entry_with_file_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no such file
        QTest::addColumn<QString>("shown");
        QTest::addRow("UTF-8") << QByteArray("Gr\xc3\xbc\xc3\x9f"
                                             "e\n")
                               << QStringLiteral("Grüße\n");
        QTest::addRow("NUL ends the text") << QByteArray("before\0after", 12) << "before";
        QTest::addRow("missing file") << QByteArray() << QString();
    }

    void entry_with_file()
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
        vn::dialog_3rd_part_lib_info dialog;
        if (content.isNull())
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression("Could not open '.*no such licence"));
        dialog.add_entry({QStringLiteral("Some library"), QStringLiteral("What it is."), path});

        const QStringList texts = label_texts(dialog);
        QCOMPARE(texts.mid(1, 2), QStringList({"Some library", "What it is."}));
        auto *edit = dialog.findChild<QTextEdit *>();
        QCOMPARE(bool(edit), !content.isNull());
        if (edit)
            QCOMPARE(edit->toPlainText(), shown);
        else
            QVERIFY2(texts.last().contains(path), qUtf8Printable(texts.last()));
    }

    // A click on the link opens the list as a modal dialog over the About
    // box; the click returns once it is closed.
    void link_opens_list()
    {
        vn::dialog_about about(nullptr, true, head_sheet, 97, 10);
        about.default_3rdparty_libs(true, false);
        about.show();
        QVERIFY(QTest::qWaitForWindowExposed(&about));
        QWidget *parent = nullptr;
        int shown = 0;
        modal_watcher watcher([&](QWidget *list) {
            shown = label_texts(*list).size();
            parent = list->parentWidget();
            list->close();
        });
        auto *link = about.findChild<vn::clickable_label *>(QStringLiteral("third_party_link"));
        QVERIFY(link);
        QTest::mouseClick(link, Qt::LeftButton);
        QCOMPARE(parent, static_cast<QWidget *>(&about));
        QCOMPARE(shown, 1 + 3 * 2); // the heading, then name and text of each
    }

    void centring_data()
    {
        QTest::addColumn<QRect>("parent"); // null: no parent
        QTest::addColumn<bool>("centred");

        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QTest::addRow("parent in the middle")
            << QRect(screen.center() - QPoint(300, 250), QSize(600, 500)) << true;
        QTest::addRow("parent at the right edge")
            << QRect(screen.right() - 60, screen.top() + 100, 100, 300) << false;
        QTest::addRow("no parent") << QRect() << false;
    }

    // A centred rectangle that doesn't fit on the screen leaves the dialog where
    // Qt puts it.
    void centring()
    {
        QFETCH(QRect, parent);
        QFETCH(bool, centred);

        QWidget window;
        if (!parent.isNull())
            window.setGeometry(parent);
        QWidget *owner = parent.isNull() ? nullptr : &window;
        vn::dialog_about dialog(owner, true, head_sheet, 97, 10);
        const QRect before = dialog.geometry();

        QCOMPARE(dialog.place_centred(owner), centred);
        QCOMPARE(dialog.size(), before.size());
        QCOMPARE(dialog.geometry().center(), centred ? parent.center() : before.center());
    }

private:
    QTemporaryDir dir_;
};

QTEST_MAIN(tst_dialog_about)
#include "tst_dialog_about.moc"
