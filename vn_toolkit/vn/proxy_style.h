#pragma once

#include <QProxyStyle>

namespace vn {

// Wraps the application's style and changes three hints: the tooltip delays
// become adjustable, and a left click on a slider groove jumps to the spot.
// GUI thread only, like every style.
class proxy_style : public QProxyStyle
{
    Q_OBJECT
    Q_DISABLE_COPY(proxy_style)

public:
    proxy_style();
    ~proxy_style() override;

    int styleHint(StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *return_data = nullptr) const override;

public slots:
    void set_tooltip_delay(int delay);
    void set_tooltip_cooldown(int delay);

private:
    int tooltip_delay_ = 0;    // ms before a tooltip shows
    int tooltip_cooldown_ = 0; // ms after which the next tooltip waits again
};

} // namespace vn
