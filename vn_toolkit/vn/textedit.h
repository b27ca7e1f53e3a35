#pragma once

#include <QTextEdit>

namespace vn {

// Themed text edit, in the colours of vn::lineedit. GUI thread only.
class textedit : public QTextEdit
{
    Q_OBJECT
    Q_DISABLE_COPY(textedit)

public:
    explicit textedit(QWidget *parent = nullptr);
    ~textedit() override;
};

} // namespace vn
