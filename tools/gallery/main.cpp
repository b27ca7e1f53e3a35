// The widget gallery: every toolkit widget in its states on one page, for
// looking at the theme by eye. Not installed; run it from the build tree.

#include <vn/button.h>
#include <vn/button_combobox.h>
#include <vn/button_custom.h>
#include <vn/button_dark.h>
#include <vn/button_dark_flat.h>
#include <vn/button_dark_round.h>
#include <vn/button_html.h>
#include <vn/button_toggle.h>
#include <vn/button_toggle_switch.h>
#include <vn/checkbox.h>
#include <vn/checkbox_flat.h>
#include <vn/clickable_label.h>
#include <vn/combobox.h>
#include <vn/combobox_lineedit.h>
#include <vn/datetime_format_selector.h>
#include <vn/label.h>
#include <vn/lineedit.h>
#include <vn/message_box.h>
#include <vn/panel.h>
#include <vn/qt/layout.h>
#include <vn/qt/stylesheet.h>
#include <vn/qt/widget_fold.h>
#include <vn/radio.h>
#include <vn/textedit.h>

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QVBoxLayout>

namespace {

const vn::pixel_argb icon_normal(0xFF818885);
const vn::pixel_argb icon_highlight(0xFFF0F0F0);

// The fonts come from the application's resources when the gallery is linked
// with them, otherwise from the system.
void set_fonts()
{
    const QString regular = QStringLiteral(":/images/FreeSans.ttf");
    const QString bold = QStringLiteral(":/images/FreeSansBold.ttf");
    if (QFile::exists(regular) && QFile::exists(bold)) {
        QFontDatabase::addApplicationFont(regular);
        QFontDatabase::addApplicationFont(bold);
    }
    QApplication::setFont(QFont(QStringLiteral("FreeSans"), 9));
}

// A pin-shaped stencil for the icon buttons; only its alpha matters.
QString make_icon(const QTemporaryDir &dir)
{
    QImage image(18, 18, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    QPainterPath pin;
    pin.addEllipse(QRectF(3, 1, 12, 12));
    pin.moveTo(4.5, 10);
    pin.lineTo(9, 17);
    pin.lineTo(13.5, 10);
    painter.drawPath(pin);
    painter.setBrush(Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.drawEllipse(QRectF(6.5, 4.5, 5, 5));
    painter.end();
    const QString path = dir.filePath(QStringLiteral("pin.png"));
    image.save(path);
    return path;
}

// The two faces of the switch: a track with the knob left or right.
QString make_switch_image(const QTemporaryDir &dir, bool on)
{
    QImage image(44, 22, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(99, 99, 99), 1));
    painter.setBrush(on ? QColor(114, 138, 132) : QColor(38, 38, 38));
    painter.drawRoundedRect(QRectF(0.5, 0.5, 43, 21), 10.5, 10.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(198, 213, 210));
    painter.drawEllipse(QRectF(on ? 25 : 3, 3, 16, 16));
    painter.end();
    const QString path = dir.filePath(on ? QStringLiteral("on.png") : QStringLiteral("off.png"));
    image.save(path);
    return path;
}

QImage square(const QColor &fill, const QColor &frame)
{
    QImage image(14, 14, QImage::Format_ARGB32);
    image.fill(fill);
    QPainter painter(&image);
    painter.setPen(frame);
    painter.drawRect(0, 0, 13, 13);
    return image;
}

QLabel *title(const QString &text)
{
    auto *label = new QLabel(text);
    label->setFont(QFont(QStringLiteral("FreeSansBold"), 11, 75));
    return label;
}

// Lets a style sheet show its :hover rules without a mouse.
template <typename W> W *hovered(W *widget)
{
    widget->setAttribute(Qt::WA_UnderMouse, true);
    return widget;
}

QWidget *row(std::initializer_list<QWidget *> widgets)
{
    auto *host = new QWidget;
    auto *box = new QHBoxLayout(host);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(8);
    for (QWidget *w : widgets)
        box->addWidget(w);
    box->addStretch(1);
    return host;
}

template <typename B>
B *dark(const QString &text, bool checkable, bool checked, bool enabled, int width = 90)
{
    auto *b = new B(text);
    b->setCheckable(checkable);
    b->setChecked(checked);
    b->setEnabled(enabled);
    b->setFixedSize(width, 27);
    return b;
}

QWidget *dark_buttons(const QString &icon)
{
    auto *host = new QWidget;
    auto *grid = new QVBoxLayout(host);
    grid->setContentsMargins(0, 0, 0, 0);

    auto *header = dark<vn::button_dark>(QObject::tr("Header"), false, false, true);
    header->set_kind(QStringLiteral("header"));
    auto *left = dark<vn::button_dark>(QObject::tr("Left, padded"), false, false, true, 120);
    left->set_alignment(QStringLiteral("left"));
    left->set_side_padding(10);
    auto *coloured = dark<vn::button_dark>(QObject::tr("Coloured"), false, false, true);
    coloured->set_text_colour(vn::pixel_argb(0xFFE0B060));
    auto *coloured_off = dark<vn::button_dark>(QObject::tr("Coloured"), false, false, false);
    coloured_off->set_text_colour(vn::pixel_argb(0xFFE0B060));
    grid->addWidget(row({dark<vn::button_dark>(QObject::tr("Normal"), false, false, true),
                         hovered(dark<vn::button_dark>(QObject::tr("Hover"), false, false, true)),
                         dark<vn::button_dark>(QObject::tr("Checked"), true, true, true),
                         dark<vn::button_dark>(QObject::tr("Disabled"), false, false, false),
                         header, left, coloured, coloured_off}));

    auto icon_button = [&icon](bool checked, bool enabled, bool hover, bool frame) {
        auto *b = dark<vn::button_dark>(QString(), true, checked, enabled, 40);
        b->set_icon(icon, -1, -1, icon_highlight, icon_normal);
        b->set_flags(frame, true, true, true);
        if (hover)
            hovered(b);
        return b;
    };
    auto *relative = dark<vn::button_dark>(QString(), false, false, true, 40);
    relative->set_icon(true, icon, -1, -1, icon_highlight, icon_normal);
    auto *scaled = dark<vn::button_dark>(QString(), false, false, true, 60);
    scaled->set_icon(icon, -1, -1, icon_highlight, icon_normal);
    scaled->scale_icon = true;
    scaled->scaled_width = 24;
    auto *momentary = dark<vn::button_dark>(QObject::tr("Momentary"), true, false, true, 110);
    momentary->momentary = true;
    grid->addWidget(
        row({icon_button(false, true, false, false), icon_button(false, true, true, false),
             icon_button(true, true, false, false), icon_button(true, true, false, true),
             icon_button(false, false, false, false), relative, scaled, momentary}));

    grid->addWidget(
        row({dark<vn::button_dark_flat>(QObject::tr("Flat"), true, false, true),
             hovered(dark<vn::button_dark_flat>(QObject::tr("Flat hover"), true, false, true)),
             dark<vn::button_dark_flat>(QObject::tr("Flat checked"), true, true, true),
             dark<vn::button_dark_flat>(QObject::tr("Flat disabled"), true, false, false),
             dark<vn::button_dark_round>(QObject::tr("Round"), true, false, true),
             hovered(dark<vn::button_dark_round>(QObject::tr("Round hover"), true, false, true)),
             dark<vn::button_dark_round>(QObject::tr("Round checked"), true, true, true),
             dark<vn::button_dark_round>(QObject::tr("Round disabled"), true, false, false)}));
    return host;
}

template <typename B> B *state(B *widget, bool checked, bool enabled)
{
    widget->setChecked(checked);
    widget->setEnabled(enabled);
    return widget;
}

QWidget *input_widgets()
{
    auto *host = new QWidget;
    auto *box = new QVBoxLayout(host);
    box->setContentsMargins(0, 0, 0, 0);

    auto *flat_colour = new vn::checkbox(QObject::tr("Flat colour"));
    flat_colour->set_sheet(4, QColor(38, 38, 38));
    auto *flat_colour_on = new vn::checkbox(QObject::tr("Flat colour"));
    flat_colour_on->set_sheet(4, QColor(114, 138, 132));
    flat_colour_on->setChecked(true);
    auto *painted = new vn::checkbox_flat(QStringLiteral("    ") + QObject::tr("Painted"));
    painted->set_images(square(QColor(114, 138, 132), Qt::white),
                        square(QColor(38, 38, 38), QColor(99, 99, 99)),
                        square(QColor(47, 47, 47), QColor(75, 75, 75)));
    painted->setChecked(true);
    box->addWidget(row({state(new vn::checkbox(QObject::tr("Unchecked")), false, true),
                        state(new vn::checkbox(QObject::tr("Checked")), true, true),
                        state(new vn::checkbox(QObject::tr("Disabled")), false, false),
                        state(new vn::checkbox(QObject::tr("Disabled checked")), true, false),
                        flat_colour, flat_colour_on, painted}));

    auto *radios = row({state(new vn::radio(QObject::tr("Unchecked")), false, true),
                        state(new vn::radio(QObject::tr("Checked")), true, true),
                        state(new vn::radio(QObject::tr("Disabled")), false, false),
                        state(new vn::radio(QObject::tr("Disabled checked")), true, false)});
    // Each radio alone: they share a parent, which would make them exclusive.
    for (vn::radio *r : radios->findChildren<vn::radio *>())
        r->setAutoExclusive(false);
    box->addWidget(radios);

    auto make_combo = [](bool enabled, bool editable) {
        auto *combo = new vn::combobox;
        combo->addItems({QObject::tr("Previous photo"), QObject::tr("Following photo"),
                         QObject::tr("Closest in time"), QObject::tr("GPX track")});
        combo->setEnabled(enabled);
        if (editable) {
            combo->setEditable(true);
            combo->setLineEdit(new vn::combobox_lineedit);
        }
        combo->setFixedSize(150, 24);
        return combo;
    };
    auto *edit = new vn::lineedit(QStringLiteral("48.137154"));
    auto *invalid = new vn::lineedit(QStringLiteral("48,13x"));
    invalid->set_border_colour(QColor(200, 60, 60));
    auto *edit_off = new vn::lineedit(QStringLiteral("11.576124"));
    edit_off->setEnabled(false);
    for (vn::lineedit *e : {edit, invalid, edit_off})
        e->setFixedSize(110, 22);
    box->addWidget(row({make_combo(true, false), make_combo(false, false), make_combo(true, true),
                        edit, invalid, edit_off}));

    auto *text = new vn::textedit;
    text->setPlainText(QObject::tr("A text edit\non two lines"));
    text->setFixedSize(200, 50);
    auto *plain = new vn::label(QObject::tr("A label"));
    plain->setStyleSheet(plain->styleSheet() + QStringLiteral("QLabel{color:rgb(198,213,210);}"));
    auto *drawn = new vn::label;
    drawn->setFixedSize(120, 22);
    drawn->paint = [](QPainter &painter, vn::label *self) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(114, 138, 132), 2));
        painter.drawRoundedRect(QRectF(self->rect()).adjusted(1, 1, -1, -1), 5, 5);
        painter.setPen(QColor(198, 213, 210));
        painter.drawText(self->rect(), Qt::AlignCenter, QObject::tr("Painted label"));
    };
    auto *link = new vn::clickable_label(QObject::tr("Clickable label"));
    link->setToolTip(QObject::tr("A tooltip in the dark theme"));
    auto *link_hover = new vn::clickable_label(QObject::tr("Clickable, hovered"));
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(link_hover, &enter);
    box->addWidget(row({text, plain, drawn, link, link_hover}));
    return host;
}

QWidget *layout_demo()
{
    using namespace vn::qt::keywords;
    auto *host = new QWidget;
    host->setFixedSize(420, 150);
    auto *grid = new vn::qt::layout(host, 4, false);
    auto tile = [](const QString &text, const QColor &colour) {
        auto *l = new QLabel(text);
        l->setAlignment(Qt::AlignCenter);
        l->setStyleSheet(QStringLiteral("QLabel{background-color:%1;color:rgb(198,213,210);}")
                             .arg(colour.name()));
        return l;
    };
    grid->add(vn::qt::cell(tile(QObject::tr("column 0"), QColor(68, 68, 68)), column_width = 100,
                           row_height = 45));
    grid->add(vn::qt::cell(tile(QObject::tr("margin 5"), QColor(91, 91, 91)), margin = {5, 5, 5, 5},
                           column_width = 100));
    grid->add(
        vn::qt::cell(tile(QObject::tr("two columns, fills"), QColor(55, 63, 61)), column_span = 2));
    grid->add(
        vn::qt::cell(tile(QObject::tr("three columns, margin left 10"), QColor(114, 138, 132)),
                     column_span = 3, margin_left = 10, row_height = 45));
    grid->add(vn::qt::cell(tile(QObject::tr("last"), QColor(68, 68, 68))));
    grid->add(vn::qt::cell(tile(QObject::tr("row 3, full width, margin top 8"), QColor(36, 36, 36)),
                           column_span = 4, margin = {8, 0, 0, 0}));
    return host;
}

QWidget *further_buttons(const QString &on, const QString &off)
{
    auto *host = new QWidget;
    auto *box = new QVBoxLayout(host);
    box->setContentsMargins(0, 0, 0, 0);

    auto *plain = new vn::button(QObject::tr("vn::button"));
    auto *framed = new vn::button(nullptr, QRect(0, 0, 99, 27));
    framed->setText(QObject::tr("With a rect"));
    framed->setFixedSize(100, 28);
    auto *html = new vn::button_html(
        QStringLiteral("<span style='color:#c6d5d2'>HTML <b>button</b></span>"));
    auto *custom = new vn::button_custom;
    custom->setFixedSize(28, 28);
    custom->set_paint([](QPainter &painter, vn::button_custom *self) {
        painter.setPen(QPen(QColor(129, 136, 133), 2));
        painter.setBrush(self->isDown() ? QColor(114, 138, 132) : QColor(68, 68, 68));
        painter.drawEllipse(QRectF(self->rect()).adjusted(2, 2, -2, -2));
    });

    QVector<vn::button_toggle *> toggles;
    for (const QString &t : {QObject::tr("One"), QObject::tr("Two"), QObject::tr("Three")}) {
        auto *b = new vn::button_toggle(t);
        b->setFixedSize(60, 26);
        b->setStyleSheet(b->styleSheet() +
                         QStringLiteral("QPushButton{color:rgb(198,213,210);"
                                        "background-color:rgb(68,68,68);border:none;}"));
        toggles << b;
    }
    vn::button_toggle::make_group(toggles, true);
    toggles[1]->set_checked(true);

    auto make_switch = [&on, &off](bool checked, bool latch) {
        auto *s = new vn::button_toggle_switch;
        s->image_on = on;
        s->image_off = off;
        s->latch = latch;
        s->frame_follows_check = false;
        s->setChecked(checked);
        s->setFixedSize(44, 22);
        s->apply_state_sheet();
        return s;
    };

    auto *combo_button = new vn::button_combobox;
    combo_button->setFixedSize(120, 26);
    combo_button->set_paint([](QPainter &painter, vn::button_combobox *self) {
        painter.fillRect(self->rect(), QColor(36, 36, 36));
        painter.setPen(QColor(99, 99, 99));
        painter.drawRect(self->rect().adjusted(0, 0, -1, -1));
        painter.setPen(QColor(198, 213, 210));
        painter.drawText(self->rect().adjusted(8, 0, 0, 0), Qt::AlignVCenter,
                         QObject::tr("Combo button ▾"));
    });
    auto *drop_down = combo_button->widget();
    drop_down->setFixedSize(160, 60);
    drop_down->setStyleSheet(
        QStringLiteral("background-color:rgb(36,36,36);color:rgb(198,213,210);"));
    auto *drop_box = new QVBoxLayout(drop_down);
    drop_box->addWidget(new QLabel(QObject::tr("A widget of the caller's")));

    box->addWidget(row({plain, framed, html, custom, toggles[0], toggles[1], toggles[2],
                        make_switch(false, false), make_switch(true, false),
                        make_switch(false, true), combo_button}));
    return host;
}

QWidget *fold_demo()
{
    using namespace vn::qt::keywords;
    auto *host = new QWidget;
    host->setFixedSize(420, 110);
    auto *grid = new vn::qt::layout(host, 1, false);
    auto *fold = new vn::qt::widget_fold(QObject::tr("A fold"), nullptr, 0.3, 25);
    auto *inside = new QLabel(QObject::tr("Content that folds away"));
    fold->content_layout()->add(vn::qt::cell(inside, row_height = 30));
    grid->add(vn::qt::cell(fold, row_height = 100, column_width = 0));
    return host;
}

} // namespace

int main(int argc, char **argv)
{
    Q_INIT_RESOURCE(vn_gui);
    QApplication app(argc, argv);
    set_fonts();

    QTemporaryDir dir;
    const QString icon = make_icon(dir);
    const QString on = make_switch_image(dir, true);
    const QString off = make_switch_image(dir, false);

    QScrollArea window;
    window.setWindowTitle(QObject::tr("vn_gallery"));
    window.setObjectName(QStringLiteral("gallery"));
    window.setWidgetResizable(true);
    window.setStyleSheet(
        QStringLiteral(
            "#gallery, #gallery_page{background-color:rgb(47,47,47);border:none;}"
            "QLabel{color:rgb(198,213,210);}QCheckBox{color:rgb(198,213,210);}"
            "QRadioButton{color:rgb(198,213,210);}QComboBox{color:rgb(198,213,210);}"
            "vn--button{color:rgb(198,213,210);}vn--button_html{color:rgb(198,213,210);}") +
        QLatin1String(vn::qt::tooltip_style));
    vn::qt::style_scroll_bars(&window);

    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("gallery_page"));
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(16, 12, 16, 12);
    column->setSpacing(6);

    column->addWidget(title(QObject::tr("Dark buttons")));
    column->addWidget(dark_buttons(icon));
    column->addWidget(title(QObject::tr("Input widgets")));
    column->addWidget(input_widgets());

    auto *middle = new QWidget;
    auto *middle_row = new QHBoxLayout(middle);
    middle_row->setContentsMargins(0, 0, 0, 0);
    middle_row->setSpacing(16);
    auto *left = new QWidget;
    auto *left_column = new QVBoxLayout(left);
    left_column->setContentsMargins(0, 0, 0, 0);
    left_column->addWidget(title(QObject::tr("Panel")));
    auto *panel_text = new QLabel(QObject::tr("Content inside a panel's border image"));
    panel_text->setContentsMargins(10, 10, 10, 10);
    left_column->addWidget(new vn::panel(panel_text));
    left_column->addWidget(title(QObject::tr("Layout: spans and margins")));
    left_column->addWidget(layout_demo());
    left_column->addWidget(title(QObject::tr("Fold")));
    left_column->addWidget(fold_demo());
    left_column->addStretch(1);
    auto *right = new QWidget;
    auto *right_column = new QVBoxLayout(right);
    right_column->setContentsMargins(0, 0, 0, 0);
    right_column->addWidget(title(QObject::tr("Date and time format")));
    right_column->addWidget(new vn::datetime_format_selector);
    auto *message = new vn::button_dark(QObject::tr("Show a message box"));
    message->setFixedSize(160, 27);
    QObject::connect(message, &QPushButton::clicked, &window, [&window] {
        vn::message_box::information(&window, QObject::tr("Gallery"),
                                     QObject::tr("A message box in the dark theme."));
    });
    right_column->addWidget(message);
    right_column->addStretch(1);
    middle_row->addWidget(left);
    middle_row->addWidget(right);
    middle_row->addStretch(1);
    column->addWidget(middle);

    column->addWidget(title(QObject::tr("Further buttons")));
    column->addWidget(further_buttons(on, off));
    column->addStretch(1);

    window.setWidget(page);
    window.resize(1240, 860);
    window.show();
    return app.exec();
}
