#pragma once

#include <QCheckBox>
#include <QColor>

namespace vn {

// Themed check box. Its indicator is either the stock images, a flat square
// in a given colour, or images of the caller's. GUI thread only.
class checkbox : public QCheckBox
{
    Q_OBJECT
    Q_DISABLE_COPY(checkbox)

public:
    explicit checkbox(QWidget *parent = nullptr);
    checkbox(const QString &text, QWidget *parent = nullptr);
    ~checkbox() override;

    // Builds and sets the sheet. A fully transparent black background with no
    // checked image gives the stock image indicators; any other background
    // flat indicators of that colour. A checked image (with an unchecked one,
    // or the stock unchecked image) gives image indicators framed like the
    // flat ones.
    void set_sheet(int spacing, const QColor &background, const QString &checked_image = {},
                   const QString &unchecked_image = {},
                   const QColor &text_colour = QColor(198, 213, 210));

    static QString sheet(int spacing, const QColor &background, const QString &checked_image,
                         const QString &unchecked_image, const QColor &text_colour);
};

} // namespace vn
