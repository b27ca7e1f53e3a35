#include "vn/proxy_style.h"

namespace vn {

// The null base style makes QProxyStyle wrap whatever QApplication::style()
// gives at the time, so the delays start as that style's own.
proxy_style::proxy_style()
    : QProxyStyle(nullptr)
{
    tooltip_delay_ = QProxyStyle::styleHint(SH_ToolTip_WakeUpDelay);
    tooltip_cooldown_ = QProxyStyle::styleHint(SH_ToolTip_FallAsleepDelay);
}

proxy_style::~proxy_style() = default;

int proxy_style::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                           QStyleHintReturn *return_data) const
{
    switch (hint) {
    case SH_ToolTip_WakeUpDelay:
        return tooltip_delay_;
    case SH_ToolTip_FallAsleepDelay:
        return tooltip_cooldown_;
    case SH_Slider_AbsoluteSetButtons:
        return Qt::LeftButton;
    default:
        return QProxyStyle::styleHint(hint, option, widget, return_data);
    }
}

void proxy_style::set_tooltip_delay(int delay)
{
    tooltip_delay_ = delay;
}

void proxy_style::set_tooltip_cooldown(int delay)
{
    tooltip_cooldown_ = delay;
}

} // namespace vn
