#include <vn/combobox.h>

#include <QMouseEvent>
#include <QWheelEvent>

namespace vn {

combobox::combobox(QWidget *parent)
    : QComboBox(parent)
{
    setStyleSheet(QStringLiteral(
        "QComboBox{padding-left:0.2em;margin-top:0px;margin-bottom:0px;outline:0px;"
        "selection-background-color:rgb(200,210,200);font-size:12px;"
        "background-color:rgb(36,36,36);border: 1px solid rgb(99,99,99);selection-color:#000;}"
        "QComboBox QAbstractItemView{margin-top:0px;margin-bottom:0px;outline:0px;"
        "selection-background-color:rgb(200,210,200);background-color:rgb(36,36,36);"
        "border: 1px solid rgb(99,99,99);selection-color:#000;color:rgb(198,213,210);}"
        "QComboBox QAbstractItemView::item{padding-left:0.5em;}"
        "QComboBox::drop-down{outline:0px;selection-background-color:rgb(200,210,200);"
        "border-width:0px;border-left:1px solid rgb(99,99,99);}"
        "QComboBox::down-arrow{image:url(:/gui/combobox/arrow.png);width:20;}"
        "QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
        "background-color:rgb(47,47,47);}"
        "QScrollBar:vertical {    border: none;    background-color:rgb(47,47,47);    "
        "width:11px;        margin: 0px 0px 0px 0px;}"
        "QScrollBar::handle:vertical {    border: 1px solid black;    border-radius: 5px;    "
        "background: rgb(0,0,0);    min-height: 20px;}"
        "QScrollBar::add-line:vertical {    background: black;    height: 0px;    "
        "subcontrol-position: bottom;    subcontrol-origin: margin;}"
        "QScrollBar::sub-line:vertical {    background: black;    height: 0px;    "
        "subcontrol-position: top;    subcontrol-origin: margin;}"));
}

combobox::~combobox() = default;

void combobox::mouseReleaseEvent(QMouseEvent *e)
{
    QComboBox::mouseReleaseEvent(e);
    emit clicked();
}

void combobox::wheelEvent(QWheelEvent *e)
{
    if (ignore_wheel) {
        e->ignore();
        return;
    }
    QComboBox::wheelEvent(e);
}

} // namespace vn
