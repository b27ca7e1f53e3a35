#include <vn/exception.h>
#include <vn/qt/layout.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QWidget>

#include <memory>

Q_DECLARE_METATYPE(vn::qt::keyword_value)
using keyword_list = QList<vn::qt::keyword_value>;
using track_list = QVector<int>;
using point_list = QVector<QPoint>;

namespace {

// Records the first column's width and the first row's height of a layout
// each time the watched widget is resized.
class resize_recorder : public QObject
{
public:
    explicit resize_recorder(vn::qt::layout *layout)
        : layout_(layout)
    {}
    QVector<QSize> sizes;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            sizes << QSize(layout_->column_width(0), layout_->row_height(0));
        return false;
    }

private:
    vn::qt::layout *layout_;
};

// The fields of a cell in one line: margins and paddings (top right bottom
// left), size, spans, tracks, slot width, offset, then "break" if set.
QString describe(const vn::qt::cell &c)
{
    QStringList f;
    for (double v : {c.margin_top, c.margin_right, c.margin_bottom, c.margin_left, c.padding_top,
                     c.padding_right, c.padding_bottom, c.padding_left, c.width, c.height})
        f << QString::number(v);
    for (int v : {c.column_span, c.row_span, c.column_width, c.row_height, c.slot_width, c.offset_x,
                  c.offset_y})
        f << QString::number(v);
    return f.join(' ') + (c.line_break ? " break" : "");
}

vn::qt::cell make_cell(QWidget *widget, const keyword_list &keywords)
{
    vn::qt::cell c(widget);
    for (const auto &k : keywords)
        c.apply(k);
    return c;
}

} // namespace

class tst_layout : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void keywords_data();
    void keywords();
    void keyword_effects_on_widget();
    void placement_data();
    void placement();
    void flow_data();
    void flow();
    void auto_tracks_data();
    void auto_tracks();
    void track_references();
    void repeat_guard_data();
    void repeat_guard();
    void sizes_and_items();
    void qt_interface_throws();
    void animate_data();
    void animate();
    void animate_outside_layout();
    void click_handler_and_destroyed_layout();
    void backgrounds_only_for_placed_cells();
    void destroyed_widget_leaves_no_entry();
    void nested_layout_and_shown_parent();
};

void tst_layout::cleanup()
{
    QCOMPARE(vn::qt::cells_by_widget.size(), size_t(0)); // every test cleans up after itself
    QVERIFY(!vn::qt::current_cell);
}

void tst_layout::keywords_data()
{
    using namespace vn::qt;
    QTest::addColumn<keyword_list>("keywords");
    QTest::addColumn<QString>("expected");
    QTest::addRow("defaults") << keyword_list{} << "-1 -1 -1 -1 0 0 0 0 -1 -1 1 1 -1 -1 0 0 0";
    QTest::addRow("later keyword wins")
        << keyword_list{margin = {1, 2, 3, 4}, margin_left = 9, margin_top = 5, margin_top = 7}
        << "7 2 3 9 0 0 0 0 -1 -1 1 1 -1 -1 0 0 0";
    QTest::addRow("all-four keyword overrides single ones")
        << keyword_list{padding_left = 9, padding = {1, 2, 3, 4}}
        << "-1 -1 -1 -1 1 2 3 4 -1 -1 1 1 -1 -1 0 0 0";
    QTest::addRow("size then height")
        << keyword_list{size = {27, 28}, height = 5} << "-1 -1 -1 -1 0 0 0 0 27 5 1 1 -1 -1 0 0 0";
    QTest::addRow("offset pair then single, one padding")
        << keyword_list{offset = {3, 4}, offset_y = 6, slot_width = 11, padding_bottom = 3}
        << "-1 -1 -1 -1 0 0 3 0 -1 -1 1 1 -1 -1 11 3 6";
    QTest::addRow("fit widget slot")
        << keyword_list{fit_widget_slot} << "-1 -1 -1 -1 0 0 0 0 33 21 1 1 -1 -1 33 0 0";
    QTest::addRow("fit widget") << keyword_list{fit_widget}
                                << "-1 -1 -1 -1 0 0 0 0 33 21 1 1 -1 -1 0 0 0";
}

void tst_layout::keywords()
{
    QFETCH(keyword_list, keywords);
    QFETCH(QString, expected);
    QWidget widget;
    widget.resize(33, 21);
    QCOMPARE(describe(make_cell(&widget, keywords)), expected);
}

void tst_layout::keyword_effects_on_widget()
{
    using namespace vn::qt;
    QWidget parent;
    auto *label = new QLabel(&parent);
    label->setStyleSheet("margin:1px;");
    const cell c(label, size = {27, 26}, style = "color:red", hidden, disabled,
                 background_style = "color:red;", no_background);
    QCOMPARE(label->minimumSize(), QSize(27, 26));
    QCOMPARE(label->maximumSize(), QSize(27, 26));
    QCOMPARE(label->styleSheet(), QStringLiteral("color:red;margin:1px;")); // parsed, sorted
    QVERIFY(label->isHidden());
    QVERIFY(!label->isEnabled());
    QVERIFY(!c.background()); // made only when placed

    layout grid(&parent, 1, false);
    cell *stored = grid.add(c);
    QVERIFY(stored->background());
    QCOMPARE(stored->background()->styleSheet(),
             QStringLiteral("color:red;background-color:none;background-image:none;"));
    // flags and styles on a cell without a widget touch nothing
    const cell empty(nullptr, hidden, style = "a:1", size = {5, 5});
    QCOMPARE(empty.width, 5.0f);
}

void tst_layout::placement_data()
{
    using namespace vn::qt;
    QTest::addColumn<keyword_list>("keywords");
    QTest::addColumn<QRect>("content");
    QTest::addColumn<QRect>("behind");
    // The slot is the whole parent: 200 by 100.
    QTest::addRow("fill less set margins")
        << keyword_list{margin_left = 10, margin_right = 20, margin_top = 5, margin_bottom = 15}
        << QRect(10, 5, 170, 80) << QRect(10, 5, 170, 80);
    QTest::addRow("fill less paddings, background around")
        << keyword_list{margin_left = 10, padding_left = 3, padding_right = 4, padding_top = 2}
        << QRect(13, 2, 183, 98) << QRect(10, 0, 190, 100);
    QTest::addRow("paddings larger than slot give size 0")
        << keyword_list{padding_left = 150, padding_right = 150, margin_top = 60,
                        margin_bottom = 60}
        << QRect(150, 60, 0, 0) << QRect(0, 60, 200, 0);
    QTest::addRow("centred truncates")
        << keyword_list{width = 51, height = 21} << QRect(74, 39, 51, 21) << QRect(74, 39, 51, 21);
    QTest::addRow("left margin hangs left")
        << keyword_list{width = 50, height = 20, margin_left = 10, margin_top = 7}
        << QRect(10, 7, 50, 20) << QRect(10, 7, 50, 20);
    QTest::addRow("zero margin is set") << keyword_list{width = 50, height = 20, margin_left = 0}
                                        << QRect(0, 40, 50, 20) << QRect(0, 40, 50, 20);
    QTest::addRow("right margin hangs right")
        << keyword_list{width = 50, height = 20, margin_right = 10, margin_bottom = 5}
        << QRect(140, 75, 50, 20) << QRect(140, 75, 50, 20);
    QTest::addRow("both margins: slot start, size kept")
        << keyword_list{width = 50, height = 20, margin = {5, 10, 5, 10}} << QRect(0, 0, 50, 20)
        << QRect(0, 0, 50, 20);
    QTest::addRow("offset moves content only")
        << keyword_list{width = 50, height = 20, offset = {3, -4}} << QRect(78, 36, 50, 20)
        << QRect(75, 40, 50, 20);
    QTest::addRow("fixed size with paddings widens background")
        << keyword_list{width = 50, height = 20, padding = {1, 2, 3, 4}} << QRect(75, 40, 50, 20)
        << QRect(71, 39, 56, 24);
}

void tst_layout::placement()
{
    QFETCH(keyword_list, keywords);
    QFETCH(QRect, content);
    QFETCH(QRect, behind);
    QWidget parent;
    parent.resize(200, 100);
    auto *child = new QWidget(&parent);
    vn::qt::layout grid(&parent, 1, false);
    vn::qt::cell *stored = grid.add(make_cell(child, keywords));
    grid.setGeometry(QRect());
    QCOMPARE(child->geometry(), content);
    QCOMPARE(stored->background()->geometry(), behind);
    QCOMPARE(stored->background()->parentWidget(), &parent);
    QCOMPARE(child->parentWidget(), &parent);
    // stacked behind its widget
    QVERIFY(parent.children().indexOf(stored->background()) < parent.children().indexOf(child));
}

void tst_layout::flow_data()
{
    using namespace vn::qt;
    QTest::addColumn<int>("wrap");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QList<keyword_list>>("cells");
    QTest::addColumn<point_list>("positions"); // column, row of each cell
    QTest::addColumn<QPoint>("cursor");        // where the next cell would go
    QTest::addRow("wrap 2 along rows") << 2 << false << QList<keyword_list>{{}, {}, {}}
                                       << point_list{{0, 0}, {1, 0}, {0, 1}} << QPoint(1, 1);
    QTest::addRow("wrap 2 down columns") << 2 << true << QList<keyword_list>{{}, {}, {}}
                                         << point_list{{0, 0}, {0, 1}, {1, 0}} << QPoint(1, 1);
    QTest::addRow("column span skips placeholder and wraps")
        << 2 << false << QList<keyword_list>{{column_span = 2}, {}} << point_list{{0, 0}, {0, 1}}
        << QPoint(1, 1);
    QTest::addRow("row span skips placeholder below")
        << 2 << false << QList<keyword_list>{{row_span = 2}, {}, {}}
        << point_list{{0, 0}, {1, 0}, {1, 1}} << QPoint(0, 2);
    QTest::addRow("wrap 0 line break starts a row")
        << 0 << false << QList<keyword_list>{{}, {line_break}, {}, {}}
        << point_list{{0, 0}, {1, 0}, {0, 1}, {1, 1}} << QPoint(2, 1);
    QTest::addRow("vertical line break starts a column")
        << 0 << true << QList<keyword_list>{{}, {line_break}, {}}
        << point_list{{0, 0}, {0, 1}, {1, 0}} << QPoint(1, 1);
}

void tst_layout::flow()
{
    QFETCH(int, wrap);
    QFETCH(bool, vertical);
    QFETCH(QList<keyword_list>, cells);
    QFETCH(point_list, positions);
    QFETCH(QPoint, cursor);
    QWidget parent;
    vn::qt::layout grid(&parent, wrap, vertical);
    QVector<QWidget *> widgets;
    for (const keyword_list &keywords : cells) {
        widgets << new QWidget(&parent);
        grid.add(make_cell(widgets.last(), keywords));
        QCOMPARE(grid.last_column(), positions[widgets.size() - 1].x());
        QCOMPARE(grid.last_row(), positions[widgets.size() - 1].y());
    }
    for (int i = 0; i < widgets.size(); ++i) {
        vn::qt::cell *c = vn::qt::cells_by_widget.at(widgets[i]);
        QCOMPARE(QPoint(c->column, c->row), positions[i]);
        QCOMPARE(grid.cell_at(c->column, c->row), c);
        QCOMPARE(c->parent_layout(), &grid);
    }
    QCOMPARE(QPoint(grid.cursor_column(), grid.cursor_row()), cursor);
    // the fill pass keeps a full rectangle
    for (int r = 0; r + 1 < grid.rows(); ++r) {
        for (int c = 0; c < grid.columns(); ++c)
            QVERIFY2(grid.cell_at(c, r), qPrintable(QString("hole at %1,%2").arg(c).arg(r)));
    }
}

void tst_layout::auto_tracks_data()
{
    QTest::addColumn<track_list>("columns");
    QTest::addColumn<track_list>("rows");
    QTest::addColumn<QRect>("last");
    // parent 300 by 100; three cells in one row; last cell's geometry
    QTest::addRow("all auto share equally")
        << track_list{0, 0, 0} << track_list{0} << QRect(200, 0, 100, 100);
    QTest::addRow("fixed first, autos share rest")
        << track_list{50, 0, 0} << track_list{0} << QRect(175, 0, 125, 100);
    QTest::addRow("fixed last") << track_list{0, 0, 100} << track_list{40}
                                << QRect(200, 0, 100, 40);
    QTest::addRow("all fixed") << track_list{10, 20, 30} << track_list{40} << QRect(30, 0, 30, 40);
}

void tst_layout::auto_tracks()
{
    QFETCH(track_list, columns);
    QFETCH(track_list, rows);
    QFETCH(QRect, last);
    QWidget parent;
    parent.resize(300, 100);
    vn::qt::layout grid(&parent, 3, false);
    QWidget *child = nullptr;
    for (int i = 0; i < 3; ++i) {
        child = new QWidget(&parent);
        grid.add(child);
        grid.column_width() = columns[i];
    }
    grid.row_height() = rows[0];
    grid.setGeometry(QRect());
    QCOMPARE(child->geometry(), last);
}

void tst_layout::track_references()
{
    using namespace vn::qt;
    QWidget parent;
    parent.resize(300, 200);
    layout grid(&parent, 2, false);
    auto *a = new QWidget(&parent);
    auto *b = new QWidget(&parent);
    auto *c = new QWidget(&parent);
    grid.add(cell(a, column_width = 40, row_height = 30));
    grid.add(cell(b, column_width = 60));
    grid.add(cell(c, slot_width = 25, width = 0));
    QCOMPARE(grid.column_width(0), 40);
    QCOMPARE(grid.column_width(1), 60);
    QCOMPARE(grid.row_height(0), 30);
    QCOMPARE(grid.row_height(), 0); // row of c, the cell placed last
    grid.row_height() = 50;
    grid.row_height(4) = 7; // past the end: grows with auto rows
    QCOMPARE(grid.rows(), 5);
    QCOMPARE(grid.row_height(2), 0);
    grid.setGeometry(QRect());
    QCOMPARE(b->geometry(), QRect(40, 0, 60, 30));
    QCOMPARE(c->geometry(), QRect(0, 30, 25, 50)); // slot_width counts for c only
    // a later cell naming a track size wins; place ignores it
    grid.place(cell(new QWidget(&parent), column_width = 99), 0, 3);
    QCOMPARE(grid.column_width(0), 40);
}

void tst_layout::repeat_guard_data()
{
    QTest::addColumn<int>("earlier_passes");
    QTest::addColumn<bool>("runs");
    QTest::addRow("fifth at the same size") << 4 << true;
    QTest::addRow("sixth at the same size") << 5 << false;
}

void tst_layout::repeat_guard()
{
    QFETCH(int, earlier_passes);
    QFETCH(bool, runs);
    QWidget parent;
    parent.resize(100, 100);
    auto *child = new QWidget(&parent);
    vn::qt::layout grid(&parent, 1, false);
    grid.add(child);
    for (int i = 0; i < earlier_passes; ++i)
        grid.setGeometry(QRect());
    child->setGeometry(5, 5, 10, 10);
    grid.setGeometry(QRect());
    QCOMPARE(child->geometry() == QRect(0, 0, 100, 100), runs);
    // a new size always gets a pass
    parent.resize(120, 100);
    grid.setGeometry(QRect());
    QCOMPARE(child->geometry(), QRect(0, 0, 120, 100));
    // place_now passes the guard, for cells changed while the size stays
    for (int i = 0; i < 5; ++i)
        grid.setGeometry(QRect());
    grid.cell_at(0, 0)->margin_left = 7;
    grid.setGeometry(QRect());
    QCOMPARE(child->x(), 0);
    grid.place_now();
    QCOMPARE(child->geometry(), QRect(7, 0, 113, 100));
}

void tst_layout::sizes_and_items()
{
    using namespace vn::qt;
    QWidget parent;
    layout grid(&parent, 2, false);
    QCOMPARE(grid.minimumSize(), QSize(0, 0));
    QCOMPARE(grid.sizeHint(), QSize(0, 0));
    QCOMPARE(grid.count(), 0);
    QVERIFY(!grid.itemAt(0));
    grid.setGeometry(QRect()); // no rows: nothing to do

    auto *a = new QWidget(&parent);
    auto *b = new QWidget(&parent);
    grid.add(cell(a, column_span = 2, column_width = 30, row_height = 10));
    grid.add(cell());                   // blank at (0, 1): not an item
    grid.add(cell(b, row_height = 15)); // (1, 1)
    QCOMPARE(grid.minimumSize(), QSize(30, 25));
    QCOMPARE(grid.sizeHint(), QSize(50, 25)); // the auto column counts 20
    QCOMPARE(grid.count(), 3);                // a, its placeholder, b
    QCOMPARE(grid.itemAt(0)->widget(), a);
    QVERIFY(grid.itemAt(1)->isEmpty() == false);
    QVERIFY(!grid.itemAt(1)->widget());
    QCOMPARE(grid.itemAt(2)->widget(), b);
    QVERIFY(!grid.itemAt(3));
    QVERIFY(!grid.itemAt(-1));
    QVERIFY(!grid.takeAt(0));
    QCOMPARE(grid.count(), 3);
    QVERIFY(grid.cell_at(0, 1)->isEmpty());
}

void tst_layout::qt_interface_throws()
{
    QWidget parent;
    vn::qt::layout grid(&parent, 1, false);
    QWidget child;
    QVERIFY_EXCEPTION_THROWN(grid.addItem(new QWidgetItem(&child)), vn::exception);
    QCOMPARE(grid.count(), 0);
}

void tst_layout::animate_data()
{
    QTest::addColumn<QString>("call"); // animate_height, _width or _size
    QTest::addColumn<QSize>("start");  // column width, row height
    QTest::addColumn<QSize>("target");
    QTest::addColumn<float>("seconds");
    QTest::addColumn<QVector<QSize>>("seen"); // the tracks at each resize of the window
    // 0.1 s gives steps at i = 1 and 2: two nudges of two resizes each, then the jump.
    const auto twice = [](const QVector<QSize> &sizes) {
        QVector<QSize> out;
        for (const QSize &size : sizes)
            out << size << size;
        return out;
    };
    QTest::addRow("height shrinks in steps") << "height" << QSize(100, 100) << QSize(0, 50) << 0.1f
                                             << twice({{100, 80}, {100, 60}, {100, 50}});
    QTest::addRow("height grows in steps") << "height" << QSize(100, 50) << QSize(0, 100) << 0.1f
                                           << twice({{100, 70}, {100, 90}, {100, 100}});
    QTest::addRow("height step truncates to 0") << "height" << QSize(100, 51) << QSize(0, 50)
                                                << 0.1f << twice({{100, 51}, {100, 51}, {100, 50}});
    QTest::addRow("height, zero seconds jumps")
        << "height" << QSize(100, 100) << QSize(0, 20) << 0.0f << twice({{100, 20}});
    QTest::addRow("height already there: nothing")
        << "height" << QSize(100, 40) << QSize(0, 40) << 0.1f << QVector<QSize>{};
    QTest::addRow("width in steps") << "width" << QSize(100, 80) << QSize(50, 0) << 0.1f
                                    << twice({{80, 80}, {60, 80}, {50, 80}});
    QTest::addRow("size in steps") << "size" << QSize(100, 80) << QSize(60, 40) << 0.1f
                                   << twice({{84, 64}, {68, 48}, {60, 40}});
}

void tst_layout::animate()
{
    QFETCH(QString, call);
    QFETCH(QSize, start);
    QFETCH(QSize, target);
    QFETCH(float, seconds);
    QFETCH(QVector<QSize>, seen);
    QWidget top;
    top.resize(300, 300);
    auto *grid = new vn::qt::layout(&top, 2, false);
    vn::qt::cell *stored = grid->add(vn::qt::cell(new QWidget(&top)));
    grid->column_width() = start.width();
    grid->row_height() = start.height();
    auto *right = new QWidget(&top);
    auto *below = new QWidget(&top);
    grid->add(right);
    grid->add(below);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    resize_recorder recorder(grid);
    top.installEventFilter(&recorder);
    if (call == "height")
        stored->animate_height(target.height(), seconds);
    else if (call == "width")
        stored->animate_width(target.width(), seconds);
    else
        stored->animate_size(target.width(), target.height(), seconds);
    top.removeEventFilter(&recorder);
    QCOMPARE(recorder.sizes, seen);
    const QSize end = seen.isEmpty() ? start : seen.last();
    QCOMPARE(QSize(grid->column_width(0), grid->row_height(0)), end);
    // the last resize placed the tracks anew
    QCOMPARE(QPoint(right->x(), below->y()), QPoint(end.width(), end.height()));
}

void tst_layout::animate_outside_layout()
{
    vn::qt::cell loose;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Not animating"));
    loose.animate_height(10, 0.0f);
    vn::qt::layout orphan(1, false);
    vn::qt::cell *stored = orphan.add(vn::qt::cell());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Not animating"));
    stored->animate_size(10, 10, 0.0f);
}

void tst_layout::click_handler_and_destroyed_layout()
{
    QWidget parent;
    auto *grid = new vn::qt::layout(&parent, 2, false);
    auto *plain = new QPushButton(&parent);
    auto *button = new QPushButton(&parent);
    grid->add(plain);
    int clicks = 0;
    vn::qt::cell *seen = nullptr;
    vn::qt::cell *stored = grid->add(vn::qt::cell(button), [&] {
        ++clicks;
        seen = vn::qt::current_cell;
    });
    auto *other = new QWidget(&parent);
    vn::qt::layout separate(1, false);
    separate.add(other);
    button->click();
    QCOMPARE(clicks, 1);
    QCOMPARE(seen, stored);
    QCOMPARE(vn::qt::current_cell, stored);
    delete grid; // takes its cells out of current_cell and cells_by_widget
    QVERIFY(!vn::qt::current_cell);
    QCOMPARE(vn::qt::cells_by_widget.count(button), size_t(0));
    QCOMPARE(vn::qt::cells_by_widget.count(other), size_t(1)); // another layout's entry stays
    QCOMPARE(button->parentWidget(), &parent);                 // widgets stay with the parent
    button->click(); // the connection went with the layout
    QCOMPARE(clicks, 1);
    delete other;
}

void tst_layout::backgrounds_only_for_placed_cells()
{
    using namespace vn::qt;
    const int before = QApplication::allWidgets().size();
    {
        const cell dropped(nullptr, background_style = "color:red;");
        const cell copy = dropped;
        QCOMPARE(QApplication::allWidgets().size(), before);
        layout unset(1, false); // never installed: backgrounds without a parent
        unset.add(copy);
        unset.add(cell(nullptr, column_span = 2));
        QVERIFY(QApplication::allWidgets().size() > before);
    }
    QCOMPARE(QApplication::allWidgets().size(), before);

    // replacing a placed cell deletes its background
    QWidget parent;
    layout grid(&parent, 1, false);
    cell *first = grid.add(cell());
    QPointer<QWidget> old_background = first->background();
    grid.place(cell(), 0, 0);
    QVERIFY(old_background.isNull());
    QVERIFY(grid.cell_at(0, 0)->background());
}

void tst_layout::destroyed_widget_leaves_no_entry()
{
    QWidget parent;
    parent.resize(50, 50);
    vn::qt::layout grid(&parent, 1, false);
    auto *child = new QWidget(&parent);
    grid.add(child);
    QCOMPARE(vn::qt::cells_by_widget.count(child), size_t(1));
    delete child;
    QCOMPARE(vn::qt::cells_by_widget.size(), size_t(0));
    grid.setGeometry(QRect()); // the cell lost its widget; nothing dangles
    QCOMPARE(grid.count(), 0);
}

void tst_layout::nested_layout_and_shown_parent()
{
    using namespace vn::qt;
    QWidget top;
    top.resize(300, 200);
    auto *outer = new layout(&top, 1, false);
    auto *inner = new layout(2, false);
    auto *a = new QLabel("a");
    auto *b = new QLabel("b");
    inner->add(cell(a, column_width = 100));
    inner->add(b);
    QWidget *host = outer->add(inner, margin_left = 20, margin_top = 10);
    QCOMPARE(host->parentWidget(), &top);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QTRY_COMPARE(host->geometry(), QRect(20, 10, 280, 190));
    QTRY_COMPARE(b->geometry(), QRect(100, 0, 180, 190));
    QCOMPARE(a->parentWidget(), host);
    QVERIFY(b->isVisible());
    // a widget added to a parent on screen is shown, unless hidden on purpose
    auto *late = new QLabel("late");
    auto *kept_hidden = new QLabel("hidden");
    inner->add(late);
    inner->add(cell(kept_hidden, hidden));
    QVERIFY(late->isVisible());
    QVERIFY(!kept_hidden->isVisible());
}

QTEST_MAIN(tst_layout)
#include "tst_layout.moc"
