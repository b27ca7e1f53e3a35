#include <vn/checkbox.h>

namespace vn {

checkbox::checkbox(QWidget *parent)
    : checkbox(QString(), parent)
{}

checkbox::checkbox(const QString &text, QWidget *parent)
    : QCheckBox(text, parent)
{
    set_sheet(4, QColor(0, 0, 0, 0));
}

checkbox::~checkbox() = default;

void checkbox::set_sheet(int spacing, const QColor &background, const QString &checked_image,
                         const QString &unchecked_image, const QColor &text_colour)
{
    setStyleSheet(sheet(spacing, background, checked_image, unchecked_image, text_colour));
}

// A checked indicator is a 10-pixel centre in a 3-pixel white frame, an
// unchecked one 14 pixels in a 1-pixel grey frame: 16 pixels outside in both.
QString checkbox::sheet(int spacing, const QColor &background, const QString &checked_image,
                        const QString &unchecked_image, const QColor &text_colour)
{
    const QString head =
        QStringLiteral("QCheckBox{spacing:%1px;color:rgb(%2,%3,%4);}QToolTip{border:1px solid "
                       "rgb(99,99,99);background-image:none;background-color:rgb(47,47,47);}")
            .arg(spacing)
            .arg(text_colour.red())
            .arg(text_colour.green())
            .arg(text_colour.blue());

    if (checked_image.isEmpty()) {
        if (background == QColor(0, 0, 0, 0))
            return head +
                   QStringLiteral("QCheckBox::indicator:enabled:unchecked"
                                  "{image:url(:/gui/checkbox/unchecked.png);}"
                                  "QCheckBox::indicator:enabled:checked{image:url(:/gui/checkbox/"
                                  "checked.png);}"
                                  "QCheckBox::indicator:!enabled:unchecked"
                                  "{image:url(:/gui/checkbox/disabled_unchecked.png);}"
                                  "QCheckBox::indicator:!enabled:checked"
                                  "{image:url(:/gui/checkbox/disabled_checked.png);}");
        return head +
               QStringLiteral("QCheckBox::indicator:unchecked{background-color:rgba(%1,%2,%3,%4);"
                              "border:1px solid rgb(99,99,99);width:14px;height:14px;}"
                              "QCheckBox::indicator:checked{background-color:rgba(%1,%2,%3,%4);"
                              "border:3px solid rgb(255,255,255);width:10px;height:10px;}")
                   .arg(background.red())
                   .arg(background.green())
                   .arg(background.blue())
                   .arg(background.alpha());
    }

    if (!unchecked_image.isEmpty())
        return head + QStringLiteral(
                          "QCheckBox::indicator:enabled:unchecked{image:url(%2);border:1px solid "
                          "rgb(99,99,99);width:14px;height:14px;}"
                          "QCheckBox::indicator:enabled:checked{image:url(%1);border:3px solid "
                          "rgb(255,255,255);width:10px;height:10px;}"
                          "QCheckBox::indicator:!enabled:unchecked{image:url(%2);border:1px solid "
                          "rgb(99,99,99);width:14px;height:14px;}"
                          "QCheckBox::indicator:!enabled:checked{image:url(%1);border:3px solid "
                          "rgb(255,255,255);width:10px;height:10px;}")
                          .arg(checked_image, unchecked_image);

    return head +
           QStringLiteral(
               "QCheckBox::indicator:enabled:unchecked{image:url(:/gui/checkbox/unchecked.png);}"
               "QCheckBox::indicator:enabled:checked{image:url(%1);border:3px solid "
               "rgb(255,255,255);width:10px;height:10px;}"
               "QCheckBox::indicator:!enabled:unchecked"
               "{image:url(:/gui/checkbox/disabled_unchecked.png);}"
               "QCheckBox::indicator:!enabled:checked{image:url(%1);border:3px solid "
               "rgb(255,255,255);width:10px;height:10px;}")
               .arg(checked_image);
}

} // namespace vn
