#include <vn/application.h>
#include <vn/main_window.h>

#include <QFileOpenEvent>
#include <QtTest>

// Records the events that reach it through the application.
class probe_window : public vn::main_window
{
    Q_OBJECT

public:
    explicit probe_window(QWidget *parent)
        : vn::main_window(parent)
    {}
    QList<QEvent::Type> seen;
    QStringList opened;

protected:
    bool event(QEvent *e) override
    {
        if (e->type() == QEvent::FileOpen || e->type() == QEvent::MetaCall) {
            seen << e->type();
            if (e->type() == QEvent::FileOpen)
                opened << static_cast<QFileOpenEvent *>(e)->file();
        }
        return vn::main_window::event(e);
    }
};

using probe_application = vn::application<probe_window>;

class tst_application : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { delete app()->main_window.data(); }

    void file_open_reaches_visible_window_data()
    {
        QTest::addColumn<bool>("create");
        QTest::addColumn<bool>("show");
        QTest::addColumn<int>("expected");
        QTest::addRow("no window") << false << false << 0;
        QTest::addRow("window not yet shown") << true << false << 0;
        QTest::addRow("visible window") << true << true << 1;
    }

    void file_open_reaches_visible_window()
    {
        QFETCH(bool, create);
        QFETCH(bool, show);
        QFETCH(int, expected);

        if (create)
            app()->main_window = new probe_window(nullptr);
        if (show) {
            app()->main_window->show();
            QVERIFY(QTest::qWaitForWindowExposed(app()->main_window));
        }
        QFileOpenEvent open(QStringLiteral("/photos/a.jpg"));
        QCoreApplication::sendEvent(app(), &open);
        if (!create)
            return; // nothing to receive it; the send itself must not crash
        QCOMPARE(app()->main_window->opened.size(), expected);
        if (expected)
            QCOMPARE(app()->main_window->opened.first(), QStringLiteral("/photos/a.jpg"));
    }

    void queued_call_stays_with_application()
    {
        app()->main_window = new probe_window(nullptr);
        app()->main_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(app()->main_window));

        bool ran = false;
        QMetaObject::invokeMethod(
            app(), [&ran] { ran = true; }, Qt::QueuedConnection);
        QTRY_VERIFY(ran);
        QVERIFY(!app()->main_window->seen.contains(QEvent::MetaCall));
    }

private:
    probe_application *app() { return static_cast<probe_application *>(qApp); }
};

int main(int argc, char **argv)
{
    probe_application app(argc, argv);
    tst_application test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_application.moc"
