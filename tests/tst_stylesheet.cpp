#include <vn/qt/stylesheet.h>

#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStyle>
#include <QTest>
#include <QWidget>

class tst_stylesheet : public QObject
{
    Q_OBJECT

private slots:
    void parse_and_write_data();
    void parse_and_write();
    void merge_data();
    void merge();
    void merge_without_colon_is_skipped();
    void scroll_bars();
};

// Each row: tag, text, what comes out.
void tst_stylesheet::parse_and_write_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const char *rows[][3] = {
        {"later declaration wins", "a:1;b:2;a:3", "a:3;b:2;"},
        {"sorted by property", "color:red;background:blue;", "background:blue;color:red;"},
        {"no colon dropped", "a:1;nonsense;b:2", "a:1;b:2;"},
        {"empty value dropped", "a:;b:2", "b:2;"},
        {"empty property dropped", ":1;b:2", "b:2;"},
        {"blanks are kept", "color: red; margin:1px", " margin:1px;color: red;"},
        {"value holds a colon", "background:url(:/gui/a.png)", "background:url(:/gui/a.png);"},
        {"utf-8 survives", "font-family:Früh", "font-family:Früh;"},
    };
    for (const auto &row : rows)
        QTest::newRow(row[0]) << QString::fromUtf8(row[1]) << QString::fromUtf8(row[2]);
}

void tst_stylesheet::parse_and_write()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const vn::qt::stylesheet sheet(text);
    QCOMPARE(QString::fromStdString(sheet.text()), expected);
    QWidget widget;
    sheet.apply(&widget);
    QCOMPARE(widget.styleSheet(), expected);
    QVERIFY(sheet.selectors().count(std::string()) == 1); // the plain selector always exists
}

// Each row: tag, the widget's sheet, the text merged in, the sheet after.
void tst_stylesheet::merge_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const char *rows[][4] = {
        {"empty text changes nothing", "color:red", "", "color:red"},
        {"new property appended", "color:red;", "margin:1px", "color:red;margin:1px;"},
        {"replaced in place", "color:red;margin:0px;border:none;", "margin:3px;",
         "color:red;margin:3px;border:none;"},
        {"several, in order", "a:1;b:2;", "b:5;c:6;a:7", "a:7;b:5;c:6;"},
        // one declaration already in place drops the whole text, earlier changes too
        {"one already there drops the rest", "a:1;b:2;", "a:5;b:2;c:3;", "a:1;b:2;"},
        {"declaration at the end without semicolon", "a:1;b:2", "b:3;", "a:1;b:3;"},
        {"property inside a longer name", "top-border:1px;", "border:2px;", "top-border:2px;"},
    };
    for (const auto &row : rows)
        QTest::newRow(row[0]) << QString(row[1]) << QString(row[2]) << QString(row[3]);
}

void tst_stylesheet::merge()
{
    QFETCH(QString, sheet);
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QWidget widget;
    widget.setStyleSheet(sheet);
    vn::qt::merge_style_sheet(&widget, text);
    QCOMPARE(widget.styleSheet(), expected);
}

void tst_stylesheet::merge_without_colon_is_skipped()
{
    QWidget widget;
    widget.setStyleSheet(QStringLiteral("a:1;"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Skipping \"broken;\""));
    vn::qt::merge_style_sheet(&widget, QStringLiteral("broken;b:2;"));
    QCOMPARE(widget.styleSheet(), QStringLiteral("a:1;b:2;"));

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No widget"));
    vn::qt::merge_style_sheet(nullptr, QStringLiteral("a:1"));
}

void tst_stylesheet::scroll_bars()
{
    QPlainTextEdit area;
    vn::qt::style_scroll_bars(&area);
    const QString vertical = area.verticalScrollBar()->styleSheet();
    const QString horizontal = area.horizontalScrollBar()->styleSheet();
    QVERIFY(vertical.contains("QScrollBar:vertical") && !vertical.contains("horizontal"));
    QVERIFY(horizontal.contains("QScrollBar:horizontal") && !horizontal.contains("vertical"));
    // one fusion style for both bars, owned by the area
    QStyle *style = area.findChild<QStyle *>();
    QVERIFY(style);
    QCOMPARE(style->objectName().toLower(), QStringLiteral("fusion"));
}

QTEST_MAIN(tst_stylesheet)
#include "tst_stylesheet.moc"
