#include <vn/proxy_style.h>

#include <QApplication>
#include <QtTest>

#include <memory>

class tst_proxy_style : public QObject
{
    Q_OBJECT

private slots:
    void hints_data();
    void hints();
};

void tst_proxy_style::hints_data()
{
    const int base_delay = QApplication::style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay);
    const int base_cooldown = QApplication::style()->styleHint(QStyle::SH_ToolTip_FallAsleepDelay);
    const int base_tab_elide = QApplication::style()->styleHint(QStyle::SH_TabBar_ElideMode);

    QTest::addColumn<int>("set_delay");    // -1: leave as it is
    QTest::addColumn<int>("set_cooldown"); // -1: leave as it is
    QTest::addColumn<int>("hint");
    QTest::addColumn<int>("expected");
    QTest::addRow("delay starts as the base style's")
        << -1 << -1 << int(QStyle::SH_ToolTip_WakeUpDelay) << base_delay;
    QTest::addRow("delay set to 2 s") << 2000 << -1 << int(QStyle::SH_ToolTip_WakeUpDelay) << 2000;
    QTest::addRow("cooldown kept when delay set")
        << 2000 << -1 << int(QStyle::SH_ToolTip_FallAsleepDelay) << base_cooldown;
    QTest::addRow("cooldown set") << -1 << 35 << int(QStyle::SH_ToolTip_FallAsleepDelay) << 35;
    QTest::addRow("slider jumps on left click")
        << -1 << -1 << int(QStyle::SH_Slider_AbsoluteSetButtons) << int(Qt::LeftButton);
    QTest::addRow("other hints pass through")
        << 2000 << 35 << int(QStyle::SH_TabBar_ElideMode) << base_tab_elide;
}

void tst_proxy_style::hints()
{
    QFETCH(int, set_delay);
    QFETCH(int, set_cooldown);
    QFETCH(int, hint);
    QFETCH(int, expected);

    vn::proxy_style style;
    if (set_delay >= 0)
        style.set_tooltip_delay(set_delay);
    if (set_cooldown >= 0)
        style.set_tooltip_cooldown(set_cooldown);
    QCOMPARE(style.styleHint(QStyle::StyleHint(hint)), expected);
}

QTEST_MAIN(tst_proxy_style)
#include "tst_proxy_style.moc"
