// The embedded pictures, fonts and help pages: every path that the window and
// the toolkit load is there, icons are stencils that survive recolouring and
// keep clear of their button's border, and stretched borders show no seam.
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

    void stencil_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QSize>("cell"); // the button the icon is centred in
        for (const char *name : {"settings", "cameras", "about", "help", "map"})
            QTest::newRow(name) << QStringLiteral(":/images/icon_%1.png").arg(name)
                                << QSize(27, 27);
        // The same load icon sits on the 25x24 drop-area button and the 22x23 GPX button.
        QTest::newRow("load") << ":/images/icon_load.png" << QSize(22, 23);
        QTest::newRow("undo") << ":/images/icon_undo.png" << QSize(25, 24);
        QTest::newRow("header sync") << ":/images/header_sync.png" << QSize(119, 46);
        QTest::newRow("header undo") << ":/images/header_undo.png" << QSize(52, 46);
    }

    void stencil()
    {
        QFETCH(QString, path);
        QFETCH(QSize, cell);

        // Centred in its button, the shape must stay clear of the 3-px border.
        const QImage img = argb(path);
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
        QStringList seen;
        for (const char *root : {":/gui", ":/images"}) {
            QDirIterator it(QString::fromLatin1(root), {"*.png"}, QDir::Files,
                            QDirIterator::Subdirectories);
            while (it.hasNext()) {
                const QString path = it.next();
                if (path.endsWith(QLatin1String("@2x.png")))
                    continue;
                seen << path;
                QVERIFY2(!QImage(path).isNull(), qPrintable(path));
                if (path != ":/images/icon.png")
                    QCOMPARE(QImage(QString(path).replace(".png", "@2x.png")).size(),
                             QImage(path).size() * 2);
            }
        }
        // The window's pictures that no other test here names.
        for (const char *name : {"icon", "warning_yellow", "logo_header"})
            QVERIFY2(seen.contains(QStringLiteral(":/images/%1.png").arg(name)), name);
    }

    void border_image_data()
    {
        QTest::addColumn<QString>("path");
        for (const char *name :
             {"button/dark_normal", "button/dark_pressed", "button/header_normal",
              "button/header_pressed", "button/blank_normal", "button/blank_pressed",
              "panel/border", "panel/border_topless"})
            QTest::newRow(name) << QStringLiteral(":/gui/%1.png").arg(name);
    }

    void border_image()
    {
        QFETCH(QString, path);
        // The flat button's resting face shows nothing; a topless panel opens upwards.
        const bool visible = !path.endsWith(QLatin1String("blank_normal.png"));
        const bool closed_top = !path.endsWith(QLatin1String("_topless.png"));

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
            const int on = lightest("checked"), off = lightest("unchecked");
            const int dis_on = lightest("disabled_checked"),
                      dis_off = lightest("disabled_unchecked");
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
        QTest::newRow("en") << QString(":/help/index_en.html") << "Strg";
        QTest::newRow("de") << QString(":/help/index_de.html") << "Ctrl";
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
