// The embedded pictures, fonts and help pages: every path that the window and
// the toolkit load is there, has the size its cell expects, and icons are
// stencils that survive recolouring.
#include <QDirIterator>
#include <QDomDocument>
#include <QFile>
#include <QImage>
#include <QRawFont>
#include <QTextCodec>
#include <QtTest>

namespace {

QImage argb(const QString &path)
{
    return QImage(path).convertToFormat(QImage::Format_ARGB32);
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

} // namespace

class tst_resources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Q_INIT_RESOURCE(vn_gui);
        Q_INIT_RESOURCE(loxmere_images);
        Q_INIT_RESOURCE(loxmere_help);
    }

    void image_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QSize>("size"); // the fixed size its cell has; invalid: none
        QTest::addColumn<QSize>("cell"); // the button a stencil icon is painted in; invalid: none

        struct row
        {
            const char *path;
            QSize size;
            QSize cell;
        };
        const QSize none;
        const row rows[] = {
            {":/images/icon.png", none, none}, // the window's icon: outside the twin rule
            {":/images/icon_settings.png", none, {27, 27}},
            {":/images/icon_cameras.png", none, {27, 27}},
            {":/images/icon_about.png", none, {27, 27}},
            {":/images/icon_help.png", none, {27, 27}},
            {":/images/icon_map.png", none, {27, 27}},
            // The same load icon sits on the 25x24 drop-area button and the 22x23 GPX button.
            {":/images/icon_load.png", none, {22, 23}},
            {":/images/icon_undo.png", none, {25, 24}},
            {":/images/header_sync.png", none, {119, 46}},
            {":/images/header_undo.png", none, {52, 46}},
            {":/images/warning_yellow.png", {47, 41}, none},
            {":/images/logo_header.png", {217, 46}, none},
        };
        for (const row &r : rows)
            QTest::newRow(r.path) << QString::fromLatin1(r.path) << r.size << r.cell;
    }

    void image()
    {
        QFETCH(QString, path);
        QFETCH(QSize, size);
        QFETCH(QSize, cell);

        const QImage img = argb(path);
        QVERIFY2(!img.isNull(), qPrintable(path));
        if (size.isValid())
            QCOMPARE(img.size(), size);
        if (!cell.isValid())
            return;

        // Centred in its button, the shape must stay clear of the 3-px border.
        const QRect painted = painted_rect(img);
        const QPoint offset((cell.width() - img.width()) / 2, (cell.height() - img.height()) / 2);
        QVERIFY(!painted.isNull());
        QVERIFY(QRect(QPoint(3, 3), cell - QSize(6, 6)).contains(painted.translated(offset)));

        // Recolouring keeps only the alpha, so the shape must be in the alpha
        // channel and drawn in one colour.
        QSet<QRgb> opaque;
        int clear = 0;
        for (int y = 0; y < img.height(); ++y) {
            for (int x = 0; x < img.width(); ++x) {
                const QRgb px = img.pixel(x, y);
                clear += qAlpha(px) == 0;
                if (qAlpha(px) == 255)
                    opaque << px;
            }
        }
        QVERIFY(clear > 0);
        QCOMPARE(opaque.size(), 1);
    }

    // Every picture but the program's icon has a twin of double size.
    void every_image_has_its_twin()
    {
        int seen = 0;
        for (const char *root : {":/gui", ":/images"}) {
            QDirIterator it(QString::fromLatin1(root), {"*.png"}, QDir::Files,
                            QDirIterator::Subdirectories);
            while (it.hasNext()) {
                const QString path = it.next();
                if (path.endsWith(QLatin1String("@2x.png")) || path == ":/images/icon.png")
                    continue;
                ++seen;
                const QString twin = QString(path).replace(".png", "@2x.png");
                QCOMPARE(QImage(twin).size(), QImage(path).size() * 2);
                QVERIFY(!QImage(path).isNull());
            }
        }
        QVERIFY(seen > 30);
    }

    void border_image_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("closed_top");
        QTest::addColumn<bool>("visible"); // has any pixel that isn't transparent

        QTest::newRow("dark pressed") << ":/gui/button/dark_pressed.png" << true << true;
        QTest::newRow("header normal") << ":/gui/button/header_normal.png" << true << true;
        QTest::newRow("blank normal") << ":/gui/button/blank_normal.png" << true << false;
        QTest::newRow("blank pressed") << ":/gui/button/blank_pressed.png" << true << true;
        QTest::newRow("panel") << ":/gui/panel/border.png" << true << true;
        QTest::newRow("panel topless") << ":/gui/panel/border_topless.png" << false << true;
    }

    void border_image()
    {
        QFETCH(QString, path);
        QFETCH(bool, closed_top);
        QFETCH(bool, visible);

        const QImage img = argb(path);
        QCOMPARE(img.size(), QSize(9, 9));
        QCOMPARE(painted_rect(img).isNull(), !visible);
        // Stretched from a 3-px slice, the edges must mirror each other and the
        // middle must be one colour, or the stretched button shows a seam.
        const QRgb middle = img.pixel(4, 4);
        for (int y = 0; y < 9; ++y)
            for (int x = 0; x < 4; ++x)
                QCOMPARE(img.pixel(x, y), img.pixel(8 - x, y));
        for (int y = 3; y < 6; ++y)
            for (int x = 3; x < 6; ++x)
                QCOMPARE(img.pixel(x, y), middle);
        // An open top carries the middle's colour up to the edge; the bottom stays closed.
        QCOMPARE(img.pixel(4, 0) != middle || img.pixel(4, 1) != middle, closed_top && visible);
        QCOMPARE(img.pixel(4, 8) != middle, visible);
    }

    // The mark is light on a dark well; dimmed when disabled, absent when off.
    void indicator_states()
    {
        for (const QString kind : {"radio", "checkbox"}) {
            const auto lightest = [&](const char *state) {
                const QImage img = argb(QStringLiteral(":/gui/%1/%2.png").arg(kind, state));
                int best = 0;
                for (int y = img.height() / 2 - 2; y < img.height() / 2 + 2; ++y)
                    for (int x = img.width() / 2 - 2; x < img.width() / 2 + 2; ++x)
                        best = qMax(best, qGray(img.pixel(x, y)));
                return best;
            };
            const int on = lightest("checked");
            const int off = lightest("unchecked");
            const int dis_on = lightest("disabled_checked");
            const int dis_off = lightest("disabled_unchecked");
            QVERIFY2(on > dis_on && dis_on > off && dis_on > dis_off,
                     qPrintable(
                         QStringLiteral("%1 %2 %3 %4").arg(on).arg(dis_on).arg(off).arg(dis_off)));
            QVERIFY(off < 80 && dis_off < 80);
        }
    }

    void drop_area_keeps_button_band_free()
    {
        for (const char *lang : {"en", "de"}) {
            const QImage img = argb(QStringLiteral(":/images/drop_images_gps_%1@2x.png").arg(lang));
            QCOMPARE(img.size(), QSize(600, 600));
            // The clear and load buttons (25x24 each, 5 px either side of the middle,
            // 45 px from the top) stand on plain black.
            for (int y = 80; y < 150; ++y)
                for (int x = 230; x < 370; ++x)
                    QVERIFY2(qAlpha(img.pixel(x, y)) == 255 && qGray(img.pixel(x, y)) < 24,
                             qPrintable(QStringLiteral("%1: %2,%3").arg(lang).arg(x).arg(y)));
            // And it says something: some light pixels below the buttons.
            int light = 0;
            for (int y = 150; y < img.height(); ++y)
                for (int x = 0; x < img.width(); ++x)
                    light += qGray(img.pixel(x, y)) > 150;
            QVERIFY(light > 400);
        }
        // Each language has its own words.
        QVERIFY(QImage(":/images/drop_images_gps_en.png") !=
                QImage(":/images/drop_images_gps_de.png"));
        QVERIFY(QImage(":/images/time_arrow_en.png") != QImage(":/images/time_arrow_de.png"));
    }

    void fonts()
    {
        for (const char *name : {"FreeSans", "FreeSansBold"}) {
            QFile file(QStringLiteral(":/images/%1.ttf").arg(name));
            QVERIFY2(file.open(QIODevice::ReadOnly), name);
            const QRawFont raw(file.readAll(), 12);
            QCOMPARE(raw.familyName(), QStringLiteral("FreeSans"));
            QCOMPARE(raw.weight() >= QFont::Bold, QByteArray(name).endsWith("Bold"));
        }
    }

    void help_page_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("other_ctrl"); // the other language's key name
        QTest::newRow("en") << ":/help/index_en.html"
                            << "Strg";
        QTest::newRow("de") << ":/help/index_de.html"
                            << "Ctrl";
    }

    void help_page()
    {
        QFETCH(QString, path);
        QFETCH(QString, other_ctrl);

        QFile file(path);
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
        const QByteArray bytes = file.readAll();
        QTextCodec::ConverterState state;
        QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes, bytes.size(), &state);
        QCOMPARE(state.invalidChars, 0);
        // The window swaps these markers for the key names before showing the page.
        text.replace(QLatin1String("StXrg"), QLatin1String("Strg"));
        text.replace(QLatin1String("CtXrl"), QLatin1String("Ctrl"));
        QVERIFY(!text.contains(other_ctrl));

        QDomDocument doc;
        QString error;
        int line = 0;
        QVERIFY2(doc.setContent(text, true, &error, &line),
                 qPrintable(QStringLiteral("%1 at line %2").arg(error).arg(line)));
        // Keys in the first column of the shortcut table, what they do in the second.
        const QDomNodeList rows = doc.elementsByTagName(QStringLiteral("tr"));
        QVERIFY(rows.size() > 1);
        for (int i = 1; i < rows.size(); ++i) {
            const QDomElement cell = rows.at(i).firstChildElement(QStringLiteral("td"));
            QVERIFY(!cell.text().isEmpty());
            QVERIFY(!cell.nextSiblingElement(QStringLiteral("td")).text().isEmpty());
        }
    }
};

QTEST_MAIN(tst_resources)
#include "tst_resources.moc"
