#include <vn/panel.h>

#include <QVBoxLayout>

namespace vn {

panel::panel(QWidget *content, QWidget *parent, bool topless)
    : QWidget(parent)
    , content_(content)
{
    const QString variant = topless ? QStringLiteral("_topless") : QString();

    auto *outer = new QVBoxLayout(this);
    outer->setSpacing(0);
    outer->setContentsMargins(0, 0, 0, 0);

    auto *frame = new QWidget(this);
    frame->setObjectName(QStringLiteral("vn--panel") + variant);
    auto *inner = new QVBoxLayout(frame);
    inner->setSpacing(0);
    // The border image is 3 pixels wide; the margin keeps the content off it.
    inner->setContentsMargins(3, 3, 3, 3);
    if (content_)
        inner->addWidget(content_, 1);
    outer->addWidget(frame);

    setStyleSheet(QStringLiteral("#vn--panel%1 {border-style:solid; border-width:3px; "
                                 "border-image:url(:/gui/panel/border%1.png) 3 stretch;}"
                                 "QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47);}")
                      .arg(variant));
}

panel::~panel() = default;

} // namespace vn
