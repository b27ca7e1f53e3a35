#pragma once

#include <QRadioButton>

namespace vn {

// Themed radio button with image indicators. The gap between indicator and
// text is `spacing`; a caller that changes it calls set_sheet() again.
// GUI thread only.
class radio : public QRadioButton
{
    Q_OBJECT
    Q_DISABLE_COPY(radio)

public:
    explicit radio(QWidget *parent = nullptr);
    radio(const QString &text, QWidget *parent = nullptr);
    ~radio() override;

    void set_sheet();

    int spacing = 4;
};

} // namespace vn
