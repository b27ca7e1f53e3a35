#include <vn/qt/layout.h>
#include <vn/qt/widget_fold.h>

#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

class tst_widget_fold : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void toggle_data();
    void toggle();
    void content_takes_open_row_height();
    void header_and_content_layouts();
    void outside_a_layout_data();
    void outside_a_layout();
};

void tst_widget_fold::cleanup()
{
    QCOMPARE(vn::qt::cells_by_widget.size(), size_t(0));
}

void tst_widget_fold::toggle_data()
{
    QTest::addColumn<bool>("own_button");
    QTest::addColumn<double>("seconds");
    QTest::addRow("own button, animated") << true << 0.05;
    QTest::addRow("caller's button, zero seconds jumps") << false << 0.0;
}

void tst_widget_fold::toggle()
{
    QFETCH(bool, own_button);
    QFETCH(double, seconds);
    QWidget top;
    top.resize(300, 400);
    auto *grid = new vn::qt::layout(&top, 1, false);
    QPushButton *caller_button = own_button ? nullptr : new QPushButton("Details");
    auto *fold = new vn::qt::widget_fold("Extras", caller_button, seconds, 25);
    grid->add(fold);
    grid->row_height() = 200;
    auto *below = new QLabel("below");
    grid->add(below);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QTRY_COMPARE(below->y(), 200);

    auto *button = caller_button ? caller_button : fold->findChild<QPushButton *>();
    QVERIFY(button);
    const QString caller_text = button->text();
    QSignalSpy folded(fold, &vn::qt::widget_fold::folded);

    button->click(); // closes to the header height
    QCOMPARE(folded.count(), 1);
    QCOMPARE(folded.at(0).at(0).toBool(), false);
    QVERIFY(fold->closed());
    QCOMPARE(grid->row_height(0), 25);
    QCOMPARE(fold->height(), 25);
    QCOMPARE(below->y(), 25);
    QCOMPARE(button->text(), own_button ? QStringLiteral("unfold") : caller_text);

    grid->row_height(0) = 180; // the row as it stands when closed does not count
    button->click();           // reopens at the height the row had before closing
    QCOMPARE(folded.count(), 2);
    QCOMPARE(folded.at(1).at(0).toBool(), true);
    QVERIFY(!fold->closed());
    QCOMPARE(grid->row_height(0), 200);
    QCOMPARE(below->y(), 200);
    QCOMPARE(button->text(), own_button ? QStringLiteral("fold") : caller_text);
}

void tst_widget_fold::content_takes_open_row_height()
{
    QWidget top;
    top.resize(300, 400);
    auto *grid = new vn::qt::layout(&top, 1, false);
    auto *fold = new vn::qt::widget_fold(QString(), nullptr, 0.0, 25);
    grid->add(fold);
    grid->row_height() = 230;
    QWidget *content = fold->content_layout()->parentWidget();
    QVERIFY(content);
    QCOMPARE(vn::qt::cells_by_widget.at(content)->height, 400.0f); // before synchronising
    // shown before the synchronising shots run: the first passes place the
    // content at 400, and the synchronised height must still arrive
    top.show();
    QCOMPARE(content->height(), 400);
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QTRY_COMPARE(vn::qt::cells_by_widget.at(content)->height, 230.0f);
    QTRY_COMPARE(content->height(), 230);
    QCOMPARE(vn::qt::cells_by_widget.at(content)->column_span, 2);
    QCOMPARE(vn::qt::cells_by_widget.at(content)->row, 1);
}

void tst_widget_fold::header_and_content_layouts()
{
    QWidget top;
    top.resize(300, 300);
    auto *grid = new vn::qt::layout(&top, 1, false);
    auto *fold = new vn::qt::widget_fold("Heading", nullptr, 0.0, 30);
    grid->add(fold);
    auto *inside = new QLabel("inside");
    fold->content_layout()->add(inside);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    auto *heading = fold->header_layout()->parentWidget()->findChild<QLabel *>();
    QVERIFY(heading);
    QCOMPARE(heading->text(), QStringLiteral("Heading"));
    QWidget *header = fold->header_layout()->parentWidget();
    QPushButton *button = fold->findChild<QPushButton *>();
    QCOMPARE(button->text(), QStringLiteral("fold"));
    QTRY_COMPARE(header->geometry(), QRect(button->width(), 0, 300 - button->width(), 30));
    QCOMPARE(inside->window(), &top);
    QTRY_COMPARE(fold->content_layout()->parentWidget()->y(), 30);
}

void tst_widget_fold::outside_a_layout_data()
{
    QTest::addColumn<bool>("in_qt_layout");
    QTest::addRow("alone") << false;
    QTest::addRow("in a Qt layout") << true;
}

void tst_widget_fold::outside_a_layout()
{
    QFETCH(bool, in_qt_layout);
    QWidget top;
    auto *fold = new vn::qt::widget_fold("Loose", nullptr, 0.0, 25);
    if (in_qt_layout) {
        auto *box = new QVBoxLayout(&top);
        box->addWidget(fold);
    } else {
        fold->setParent(&top);
    }
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QSignalSpy folded(fold, &vn::qt::widget_fold::folded);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Not folding"));
    fold->findChild<QPushButton *>()->click();
    QCOMPARE(folded.count(), 0);
    QVERIFY(!fold->closed());
    QCOMPARE(fold->findChild<QPushButton *>()->text(), QStringLiteral("fold"));
    QTest::qWait(0); // the synchronising shots find no cell either
    QCOMPARE(vn::qt::cells_by_widget.count(fold), size_t(0));
}

QTEST_MAIN(tst_widget_fold)
#include "tst_widget_fold.moc"
