#include "drop_files_widget.h"

#include <QtTest>

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>

// Drops are made as the desktop delivers them: a QDragEnterEvent, then a
// QDropEvent, both carrying real QMimeData.
class tst_drop_files_widget : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(dir_.isValid());
        root_ = dir_.path();
        QDir(root_).removeRecursively();
        QDir().mkpath(root_);
        QVERIFY(!make_file("a.jpg").isEmpty());
        QVERIFY(!make_file("b.txt").isEmpty());
        QVERIFY(!make_file("folder/c.jpg").isEmpty());
        QVERIFY(!make_file("folder/d.nef").isEmpty());
        QVERIFY(!make_file("folder/sub/deep.jpg").isEmpty());
        QVERIFY(!make_file(QString::fromUtf8("Grünwald Straße 1.jpg")).isEmpty());
        QVERIFY(!make_file("line\nfeed.jpg").isEmpty());
    }

    void drag_enter_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("accepted");
        QTest::addRow("uri list") << "text/uri-list" << true;
        QTest::addRow("plain text") << "text/plain" << false;
    }

    void drag_enter()
    {
        QFETCH(QString, format);
        QFETCH(bool, accepted);
        drop_files_widget widget;
        widget.setAcceptDrops(true);
        QMimeData mime;
        mime.setData(format, QByteArray("file://") + root_.toUtf8() + "/a.jpg\r\n");
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        enter.ignore(); // a drag enter event starts accepted; only the widget may accept it
        QApplication::sendEvent(&widget, &enter);
        QCOMPARE(enter.isAccepted(), accepted);
    }

    void drop_data()
    {
        QTest::addColumn<QStringList>("dropped"); // relative to the folder, or a full URL
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<bool>("any_order");

        QTest::addRow("files keep drop order")
            << QStringList{"b.txt", "a.jpg"} << QStringList{"b.txt", "a.jpg"} << false;
        // Sub-folders are neither listed nor entered.
        QTest::addRow("folder one level")
            << QStringList{"folder"} << QStringList{"folder/c.jpg", "folder/d.nef"} << true;
        QTest::addRow("web link") << QStringList{"https://example.org/a.jpg"} << QStringList{}
                                  << false;
        QTest::addRow("missing file") << QStringList{"gone.jpg"} << QStringList{} << false;
        QTest::addRow("umlauts and blanks")
            << QStringList{QString::fromUtf8("Grünwald Straße 1.jpg")}
            << QStringList{QString::fromUtf8("Grünwald Straße 1.jpg")} << false;
        QTest::addRow("line feed in name")
            << QStringList{"line\nfeed.jpg"} << QStringList{"line\nfeed.jpg"} << false;
        QTest::addRow("folder named through dot-dot")
            << QStringList{"folder/sub/.."} << QStringList{"folder/c.jpg", "folder/d.nef"} << true;
    }

    void drop()
    {
        QFETCH(QStringList, dropped);
        QFETCH(QStringList, expected);
        QFETCH(bool, any_order);

        QList<QUrl> urls;
        for (const QString &entry : qAsConst(dropped))
            urls << (entry.contains("://") ? QUrl(entry)
                                           : QUrl::fromLocalFile(root_ + '/' + entry));
        QStringList expected_paths;
        for (const QString &entry : qAsConst(expected))
            expected_paths << QFileInfo(root_ + '/' + entry).absoluteFilePath();

        drop_files_widget widget;
        widget.setAcceptDrops(true);
        QSignalSpy spy(&widget, &drop_files_widget::files_dropped);
        QMimeData mime;
        mime.setUrls(urls);
        QVERIFY(send_drop(&widget, mime));
        QCOMPARE(spy.count(), 1); // also for a drop that gives nothing
        QStringList got = spy.at(0).at(0).toStringList();
        if (any_order) {
            got.sort();
            expected_paths.sort();
        }
        QCOMPARE(got, expected_paths);
    }

    void folder_first_keeps_order()
    {
        drop_files_widget widget;
        widget.setAcceptDrops(true);
        QSignalSpy spy(&widget, &drop_files_widget::files_dropped);
        QMimeData mime;
        mime.setUrls(
            {QUrl::fromLocalFile(root_ + "/folder"), QUrl::fromLocalFile(root_ + "/a.jpg")});
        QVERIFY(send_drop(&widget, mime));

        QCOMPARE(spy.count(), 1);
        const QStringList got = spy.at(0).at(0).toStringList();
        QCOMPARE(got.size(), 3);
        QCOMPARE(got.last(), root_ + "/a.jpg");
        QVERIFY(got.at(0).startsWith(root_ + "/folder/"));
        QVERIFY(got.at(1).startsWith(root_ + "/folder/"));
    }

private:
    // Qt hands a drop only to a widget that has accepted the drag's entry, as on
    // the desktop; the result is whether the drop was accepted.
    static bool send_drop(QWidget *widget, const QMimeData &mime)
    {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &enter);
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QApplication::sendEvent(widget, &event);
        return event.isAccepted();
    }

    QString make_file(const QString &relative)
    {
        const QString path = root_ + '/' + relative;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return QString();
        file.write("x");
        return path;
    }

    QTemporaryDir dir_;
    QString root_;
};

QTEST_MAIN(tst_drop_files_widget)
#include "tst_drop_files_widget.moc"
