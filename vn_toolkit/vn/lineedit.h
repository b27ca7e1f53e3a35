#pragma once

#include <QColor>
#include <QLineEdit>

namespace vn {

// Themed line edit: a sunken field with a one-pixel border whose colour the
// caller may change (a red border marks invalid input). GUI thread only.
class lineedit : public QLineEdit
{
    Q_OBJECT
    Q_DISABLE_COPY(lineedit)

public:
    explicit lineedit(QWidget *parent = nullptr);
    lineedit(const QString &text, QWidget *parent = nullptr);
    ~lineedit() override;

    // Sets the border colour (red, green and blue; alpha is ignored) and the
    // sheet.
    void set_border_colour(const QColor &colour);
    QColor border_colour() const { return border_colour_; }

private:
    void set_sheet();

    QColor border_colour_;
};

} // namespace vn
