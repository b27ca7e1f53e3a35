#include <vn/application.h>
#include <vn/main_window.h>

#include <QFileOpenEvent>
#include <QtTest>

// Records the events that reach it through the application.
class probe_window : public vn::main_window
{
    Q_OBJECT

public:
    QStringList seen; // the opened files, and "queued call" for a queued call

protected:
    bool event(QEvent *e) override
    {
        if (e->type() == QEvent::FileOpen)
            seen << static_cast<QFileOpenEvent *>(e)->file();
        if (e->type() == QEvent::MetaCall)
            seen << QStringLiteral("queued call");
        return vn::main_window::event(e);
    }
};

using probe_application = vn::application<probe_window>;

// Only QEvent::FileOpen is forwarded, and only to a visible window: a queued
// call to the application must run on the application, not reach the window.
class tst_application : public QObject
{
    Q_OBJECT

    static probe_application *app() { return static_cast<probe_application *>(qApp); }

private slots:
    void cleanup() { delete app()->main_window.data(); }

    void forwarding_data()
    {
        QTest::addColumn<bool>("create");
        QTest::addColumn<bool>("show");
        QTest::addColumn<QStringList>("seen");
        QTest::addRow("no window") << false << false << QStringList();
        QTest::addRow("window not yet shown") << true << false << QStringList();
        QTest::addRow("visible window") << true << true << QStringList{"/photos/a.jpg"};
    }

    void forwarding()
    {
        QFETCH(bool, create);
        QFETCH(bool, show);
        QFETCH(QStringList, seen);

        if (create)
            app()->main_window = new probe_window;
        if (show) {
            app()->main_window->show();
            QVERIFY(QTest::qWaitForWindowExposed(app()->main_window));
        }
        QFileOpenEvent open(QStringLiteral("/photos/a.jpg"));
        QCoreApplication::sendEvent(app(), &open); // with no window: no crash
        bool ran = false;
        QMetaObject::invokeMethod(
            app(), [&ran] { ran = true; }, Qt::QueuedConnection);
        QTRY_VERIFY(ran);
        if (create)
            QCOMPARE(app()->main_window->seen, seen);
    }
};

int main(int argc, char **argv)
{
    probe_application app(argc, argv);
    tst_application test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_application.moc"
