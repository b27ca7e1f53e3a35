// The embedded pictures, fonts and help pages: every path that the window and
// the toolkit load is there, has the size its cell expects, and icons are
// stencils that survive recolouring.
#include <QDirIterator>
#include <QDomDocument>
#include <QFile>
#include <QFontDatabase>
#include <QImage>
#include <QRawFont>
#include <QTextCodec>
#include <QtTest>

namespace {

enum class kind { stencil, picture, border };

QSize twice(const QSize &s)
{
    return s * 2;
}

// The smallest rectangle that holds every pixel that isn't fully transparent.
QRect painted_rect(const QImage &img)
{
    QRect r;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (qAlpha(img.pixel(x, y)) > 0)
                r |= QRect(x, y, 1, 1);
    return r;
}

QString read_utf8(const QString &path, bool *valid)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QString();
    const QByteArray bytes = f.readAll();
    QTextCodec::ConverterState state;
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    *valid = state.invalidChars == 0;
    return text;
}

} // namespace

Q_DECLARE_METATYPE(kind)

class tst_resources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void image_data();
    void image();
    void every_scaled_image_has_its_base_data();
    void every_scaled_image_has_its_base();
    void border_image_data();
    void border_image();
    void indicator_states_data();
    void indicator_states();
    void language_pictures_differ_data();
    void language_pictures_differ();
    void drop_area_keeps_button_band_free_data();
    void drop_area_keeps_button_band_free();
    void font_data();
    void font();
    void help_page_data();
    void help_page();
};

void tst_resources::initTestCase()
{
    Q_INIT_RESOURCE(vn_gui);
    Q_INIT_RESOURCE(loxmere_images);
    Q_INIT_RESOURCE(loxmere_help);
}

void tst_resources::image_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size"); // invalid: no fixed size
    QTest::addColumn<QSize>("cell"); // the button the icon is painted in; invalid: none
    QTest::addColumn<kind>("type");
    QTest::addColumn<bool>("scaled"); // has an @2x twin

    const QSize none;
    const QSize nine(9, 9);
    for (const char *name : {"button/dark_normal", "button/dark_pressed", "button/header_normal",
                             "button/header_pressed", "button/blank_normal", "button/blank_pressed",
                             "panel/border", "panel/border_topless"})
        QTest::newRow(name) << QStringLiteral(":/gui/%1.png").arg(name) << nine << none
                            << kind::border << true;
    for (const char *name :
         {"radio/checked", "radio/unchecked", "radio/disabled_checked", "radio/disabled_unchecked"})
        QTest::newRow(name) << QStringLiteral(":/gui/%1.png").arg(name) << QSize(13, 13) << none
                            << kind::picture << true;
    for (const char *name : {"checkbox/checked", "checkbox/unchecked", "checkbox/disabled_checked",
                             "checkbox/disabled_unchecked"})
        QTest::newRow(name) << QStringLiteral(":/gui/%1.png").arg(name) << QSize(16, 16) << none
                            << kind::picture << true;
    QTest::newRow("combobox/arrow")
        << ":/gui/combobox/arrow.png" << QSize(24, 24) << none << kind::picture << true;

    QTest::newRow("icon") << ":/images/icon.png" << QSize(256, 256) << none << kind::picture
                          << false;
    const QSize head_button(27, 27);
    QTest::newRow("icon_settings")
        << ":/images/icon_settings.png" << none << head_button << kind::stencil << true;
    QTest::newRow("icon_about") << ":/images/icon_about.png" << none << head_button << kind::stencil
                                << true;
    QTest::newRow("icon_help") << ":/images/icon_help.png" << none << head_button << kind::stencil
                               << true;
    // The same load icon sits on the 25x24 drop-area button and the 22x23 GPX button.
    QTest::newRow("icon_load") << ":/images/icon_load.png" << none << QSize(22, 23) << kind::stencil
                               << true;
    QTest::newRow("icon_undo") << ":/images/icon_undo.png" << none << QSize(25, 24) << kind::stencil
                               << true;
    QTest::newRow("header_sync") << ":/images/header_sync.png" << none << QSize(119, 46)
                                 << kind::stencil << true;
    QTest::newRow("header_undo") << ":/images/header_undo.png" << none << QSize(52, 46)
                                 << kind::stencil << true;
    for (const char *name : {"mode_1", "mode_2", "mode_3"})
        QTest::newRow(name) << QStringLiteral(":/images/%1.png").arg(name) << none << none
                            << kind::picture << true;
    for (const char *name : {"time_arrow_en", "time_arrow_de"})
        QTest::newRow(name) << QStringLiteral(":/images/%1.png").arg(name) << none << none
                            << kind::picture << true;
    for (const char *name : {"drop_images_gps_en", "drop_images_gps_de"})
        QTest::newRow(name) << QStringLiteral(":/images/%1.png").arg(name) << QSize(300, 300)
                            << none << kind::picture << true;
    QTest::newRow("warning_yellow")
        << ":/images/warning_yellow.png" << QSize(47, 41) << none << kind::picture << true;
    QTest::newRow("logo_header") << ":/images/logo_header.png" << QSize(217, 46) << none
                                 << kind::picture << true;
    QTest::newRow("head_medium_dark_without_shadow")
        << ":/images/head_medium_dark_without_shadow.png" << none << none << kind::picture << true;
    QTest::newRow("logo") << ":/images/logo.png" << none << none << kind::picture << true;
    QTest::newRow("Head") << ":/images/Head.png" << none << none << kind::picture << true;
}

void tst_resources::image()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    QFETCH(QSize, cell);
    QFETCH(kind, type);
    QFETCH(bool, scaled);

    const QImage img = QImage(path).convertToFormat(QImage::Format_ARGB32);
    QVERIFY2(!img.isNull(), qPrintable(path));
    if (size.isValid())
        QCOMPARE(img.size(), size);

    if (path.contains(QLatin1String("time_arrow")))
        QCOMPARE(img.height(), 20);
    if (path.contains(QLatin1String("head_medium_dark_without_shadow")))
        QCOMPARE(img.height(), 66);
    if (path.endsWith(QLatin1String("/Head.png")))
        QCOMPARE(img.height(), 97);
    if (path.contains(QLatin1String("/mode_"))) // beside 13-px radios in a 220-px panel
        QVERIFY(img.width() <= 220 - 25 - 13 - 20 && img.height() >= 13);

    if (scaled) {
        QString twin = path;
        twin.replace(QLatin1String(".png"), QLatin1String("@2x.png"));
        const QImage big(twin);
        QVERIFY2(!big.isNull(), qPrintable(twin));
        QCOMPARE(big.size(), twice(img.size()));
    }

    if (cell.isValid()) {
        // Centred in its button, the shape must stay clear of the 3-px border.
        const QRect painted = painted_rect(img);
        QVERIFY(!painted.isNull());
        const QPoint offset((cell.width() - img.width()) / 2, (cell.height() - img.height()) / 2);
        const QRect inner = QRect(QPoint(0, 0), cell).adjusted(3, 3, -3, -3);
        QVERIFY2(inner.contains(painted.translated(offset)),
                 qPrintable(QStringLiteral("painted %1,%2 %3x%4")
                                .arg(painted.x() + offset.x())
                                .arg(painted.y() + offset.y())
                                .arg(painted.width())
                                .arg(painted.height())));
    }

    if (type == kind::stencil) {
        // Recolouring keeps only the alpha, so the shape must be in the alpha
        // channel and drawn in one colour.
        int clear = 0;
        int opaque = 0;
        QRgb flat = 0;
        for (int y = 0; y < img.height(); ++y) {
            for (int x = 0; x < img.width(); ++x) {
                const QRgb px = img.pixel(x, y);
                if (qAlpha(px) == 0)
                    ++clear;
                if (qAlpha(px) < 255)
                    continue;
                if (opaque++ == 0)
                    flat = px;
                QVERIFY2(px == flat, qPrintable(QStringLiteral("pixel %1,%2").arg(x).arg(y)));
            }
        }
        QVERIFY(clear > 0);
        QVERIFY(opaque > 0);
    }
}

void tst_resources::every_scaled_image_has_its_base_data()
{
    QTest::addColumn<QString>("path");
    int rows = 0;
    for (const char *root : {":/gui", ":/images"}) {
        QDirIterator it(QString::fromLatin1(root), QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            if (!path.endsWith(QLatin1String("@2x.png")))
                continue;
            QTest::newRow(qPrintable(path)) << path;
            ++rows;
        }
    }
    if (rows == 0)
        QFAIL("no @2x pictures in the resources");
}

void tst_resources::every_scaled_image_has_its_base()
{
    QFETCH(QString, path);
    QString base = path;
    base.replace(QLatin1String("@2x.png"), QLatin1String(".png"));
    const QImage small(base);
    QVERIFY2(!small.isNull(), qPrintable(base));
    QCOMPARE(QImage(path).size(), twice(small.size()));
}

void tst_resources::border_image_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("closed_top");
    QTest::addColumn<bool>("visible"); // has any pixel that isn't transparent

    QTest::newRow("dark normal") << ":/gui/button/dark_normal.png" << true << true;
    QTest::newRow("dark pressed") << ":/gui/button/dark_pressed.png" << true << true;
    QTest::newRow("header normal") << ":/gui/button/header_normal.png" << true << true;
    QTest::newRow("header pressed") << ":/gui/button/header_pressed.png" << true << true;
    QTest::newRow("blank normal") << ":/gui/button/blank_normal.png" << true << false;
    QTest::newRow("blank pressed") << ":/gui/button/blank_pressed.png" << true << true;
    QTest::newRow("panel") << ":/gui/panel/border.png" << true << true;
    QTest::newRow("panel topless") << ":/gui/panel/border_topless.png" << false << true;
}

void tst_resources::border_image()
{
    QFETCH(QString, path);
    QFETCH(bool, closed_top);
    QFETCH(bool, visible);

    const QImage img = QImage(path).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(img.size(), QSize(9, 9));
    QCOMPARE(painted_rect(img).isNull(), !visible);

    // Stretched from a 3-px slice, the edges must mirror each other and the
    // middle must be one colour, or the stretched button shows a seam.
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 4; ++x)
            QCOMPARE(img.pixel(x, y), img.pixel(8 - x, y));
    for (int y = 3; y < 6; ++y)
        for (int x = 3; x < 6; ++x)
            QCOMPARE(img.pixel(x, y), img.pixel(4, 4));

    // An open top carries the middle's colour up to the edge; the bottom stays closed.
    const QRgb middle = img.pixel(4, 4);
    const bool top_differs = img.pixel(4, 0) != middle || img.pixel(4, 1) != middle;
    QCOMPARE(top_differs, closed_top && visible);
    QCOMPARE(img.pixel(4, 8) != middle, visible);
}

void tst_resources::indicator_states_data()
{
    QTest::addColumn<QString>("on");
    QTest::addColumn<QString>("off");
    QTest::addColumn<QString>("disabled_on");
    QTest::addColumn<QString>("disabled_off");

    QTest::newRow("radio") << ":/gui/radio/checked.png"
                           << ":/gui/radio/unchecked.png"
                           << ":/gui/radio/disabled_checked.png"
                           << ":/gui/radio/disabled_unchecked.png";
    QTest::newRow("checkbox") << ":/gui/checkbox/checked.png"
                              << ":/gui/checkbox/unchecked.png"
                              << ":/gui/checkbox/disabled_checked.png"
                              << ":/gui/checkbox/disabled_unchecked.png";
}

void tst_resources::indicator_states()
{
    QFETCH(QString, on);
    QFETCH(QString, off);
    QFETCH(QString, disabled_on);
    QFETCH(QString, disabled_off);

    // The mark is light on a dark well; dimmed when disabled, absent when off.
    const auto lightest = [](const QString &path) {
        const QImage img = QImage(path).convertToFormat(QImage::Format_ARGB32);
        int best = 0;
        const QRect middle(img.width() / 2 - 2, img.height() / 2 - 2, 4, 4);
        for (int y = middle.top(); y <= middle.bottom(); ++y)
            for (int x = middle.left(); x <= middle.right(); ++x)
                best = qMax(best, qGray(img.pixel(x, y)));
        return best;
    };
    const int l_on = lightest(on);
    const int l_off = lightest(off);
    const int l_dis_on = lightest(disabled_on);
    const int l_dis_off = lightest(disabled_off);
    QVERIFY2(l_on > l_dis_on && l_dis_on > l_off,
             qPrintable(QStringLiteral("%1 %2 %3").arg(l_on).arg(l_dis_on).arg(l_off)));
    QVERIFY(l_dis_on > l_dis_off);
    QVERIFY(l_off < 80 && l_dis_off < 80);
    QVERIFY(QImage(off) != QImage(disabled_off)); // a disabled box looks disabled
}

void tst_resources::language_pictures_differ_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("drop area") << "drop_images_gps_%1.png";
    QTest::newRow("time arrow") << "time_arrow_%1.png";
}

void tst_resources::language_pictures_differ()
{
    QFETCH(QString, name);
    const QImage en(QStringLiteral(":/images/") + name.arg(QStringLiteral("en")));
    const QImage de(QStringLiteral(":/images/") + name.arg(QStringLiteral("de")));
    QVERIFY(!en.isNull() && !de.isNull());
    QCOMPARE(en.size(), de.size());
    QVERIFY(en != de);
}

void tst_resources::drop_area_keeps_button_band_free_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("en") << ":/images/drop_images_gps_en.png";
    QTest::newRow("de") << ":/images/drop_images_gps_de.png";
    QTest::newRow("en@2x") << ":/images/drop_images_gps_en@2x.png";
    QTest::newRow("de@2x") << ":/images/drop_images_gps_de@2x.png";
}

void tst_resources::drop_area_keeps_button_band_free()
{
    QFETCH(QString, path);
    const QImage img = QImage(path).convertToFormat(QImage::Format_ARGB32);
    const int s = img.width() / 300;
    QVERIFY(s >= 1);
    // The clear and load buttons (25x24 each, 5 px either side of the middle,
    // 45 px from the top) stand on plain black, with a little room around them.
    for (int y = 40 * s; y < 75 * s; ++y) {
        for (int x = 115 * s; x < 185 * s; ++x) {
            const QRgb px = img.pixel(x, y);
            QVERIFY2(qAlpha(px) == 255 && qGray(px) < 24,
                     qPrintable(QStringLiteral("pixel %1,%2").arg(x).arg(y)));
        }
    }
    // The background is black like its cell, to the corners.
    for (const QPoint &p : {QPoint(0, 0), QPoint(img.width() - 1, img.height() - 1)})
        QCOMPARE(img.pixel(p), qRgb(0, 0, 0));
    // And it says something: some light pixels below the buttons.
    int light = 0;
    for (int y = 75 * s; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            light += qGray(img.pixel(x, y)) > 150;
    QVERIFY(light > 100 * s * s);
}

void tst_resources::font_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("bold");
    QTest::newRow("regular") << ":/images/FreeSans.ttf" << false;
    QTest::newRow("bold") << ":/images/FreeSansBold.ttf" << true;
}

void tst_resources::font()
{
    QFETCH(QString, path);
    QFETCH(bool, bold);
    QFile file(path);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
    const QRawFont raw(file.readAll(), 12);
    QVERIFY(raw.isValid());
    QCOMPARE(raw.familyName(), QStringLiteral("FreeSans"));
    QCOMPARE(raw.weight() >= QFont::Bold, bold);
    const int id = QFontDatabase::addApplicationFont(path);
    QVERIFY(id >= 0);
    QCOMPARE(QFontDatabase::applicationFontFamilies(id), QStringList{"FreeSans"});
}

void tst_resources::help_page_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("ctrl");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QStringList>("headings");

    QTest::newRow("en") << ":/help/index_en.html"
                        << "Ctrl"
                        << QStringList{"Ctrl + Q or Alt + F4", "Ctrl + O", "F1 or Ctrl + ?"}
                        << QStringList{"Help", "Keyboard Shortcuts"};
    QTest::newRow("de") << ":/help/index_de.html"
                        << "Strg"
                        << QStringList{"Strg + Q oder Alt + F4", "Strg + O", "F1 oder Strg + ?"}
                        << QStringList{"Hilfe", "Tastenkürzel"};
}

void tst_resources::help_page()
{
    QFETCH(QString, path);
    QFETCH(QString, ctrl);
    QFETCH(QStringList, keys);
    QFETCH(QStringList, headings);

    bool valid_utf8 = false;
    QString text = read_utf8(path, &valid_utf8);
    QVERIFY2(!text.isEmpty(), qPrintable(path));
    QVERIFY(valid_utf8);
    // The window swaps these markers for the key names before showing the page.
    text.replace(QLatin1String("StXrg"), QLatin1String("Strg"));
    text.replace(QLatin1String("CtXrl"), QLatin1String("Ctrl"));
    QCOMPARE(text.contains(QLatin1String(ctrl == QLatin1String("Ctrl") ? "Strg" : "Ctrl")), false);

    QDomDocument doc;
    QString error;
    int line = 0;
    QVERIFY2(doc.setContent(text, true, &error, &line),
             qPrintable(QStringLiteral("%1 at line %2").arg(error).arg(line)));
    QCOMPARE(doc.documentElement().tagName(), QStringLiteral("html"));
    QCOMPARE(doc.elementsByTagName(QStringLiteral("title")).at(0).toElement().text(),
             QStringLiteral("Help - Loxmere"));
    QVERIFY(text.contains(QLatin1String("charset=UTF-8")));

    const QString style = doc.elementsByTagName(QStringLiteral("style")).at(0).toElement().text();
    for (const char *rule : {"background-color: #222222", "color: #b8c4bf", "font-family: Verdana",
                             "a { color: #728a84; }"})
        QVERIFY2(style.contains(QLatin1String(rule)), rule);

    const QDomNodeList links = doc.elementsByTagName(QStringLiteral("a"));
    QCOMPARE(links.size(), 2);
    const QString tutorial = links.at(0).toElement().attribute(QStringLiteral("href"));
    const QString manual = links.at(1).toElement().attribute(QStringLiteral("href"));
    QVERIFY(tutorial.startsWith(QLatin1String("https://orvane.example/loxmere/")));
    QVERIFY(manual.startsWith(QLatin1String("https://orvane.example/loxmere/")));
    QVERIFY(manual.endsWith(QLatin1String(".pdf")));

    QCOMPARE(doc.elementsByTagName(QStringLiteral("h1")).size(), 1);
    QCOMPARE(doc.elementsByTagName(QStringLiteral("h1")).at(0).toElement().text(), headings.at(0));
    QCOMPARE(doc.elementsByTagName(QStringLiteral("h2")).size(), 1);
    QCOMPARE(doc.elementsByTagName(QStringLiteral("h2")).at(0).toElement().text(), headings.at(1));

    // Header row plus the three shortcuts, keys in the first column.
    const QDomNodeList rows = doc.elementsByTagName(QStringLiteral("tr"));
    QCOMPARE(rows.size(), 1 + keys.size());
    for (int i = 0; i < keys.size(); ++i) {
        const QDomElement cell = rows.at(i + 1).firstChildElement(QStringLiteral("td"));
        QCOMPARE(cell.text(), keys.at(i));
        QVERIFY(!cell.nextSiblingElement(QStringLiteral("td")).text().isEmpty());
    }
}

QTEST_MAIN(tst_resources)
#include "tst_resources.moc"
