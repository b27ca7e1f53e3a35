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
        root_ = dir_.path();
        QDir(root_).removeRecursively();
        for (const QString name : {"a.jpg", "b.txt", "folder/c.jpg", "folder/sub/deep.jpg",
                                   "Grünwald Straße 1.jpg", "line\nfeed.jpg"})
            QVERIFY(!make_file(name).isEmpty());
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
        QTest::addColumn<QString>("dropped"); // relative to the folder, or a full URL; "|" between
        QTest::addColumn<QString>("expected");
        const char *rows[][3] = {
            {"files keep drop order", "b.txt|a.jpg", "b.txt|a.jpg"},
            // Sub-folders are neither listed nor entered.
            {"folder one level, then a file", "folder|a.jpg", "folder/c.jpg|a.jpg"},
            {"folder named through dot-dot", "folder/sub/..", "folder/c.jpg"},
            {"web link", "https://example.org/a.jpg", ""},
            {"missing file", "gone.jpg", ""},
            {"umlauts and blanks", "Grünwald Straße 1.jpg", "Grünwald Straße 1.jpg"},
            {"line feed in name", "line\nfeed.jpg", "line\nfeed.jpg"},
        };
        for (const auto &row : rows)
            QTest::newRow(row[0]) << QString::fromUtf8(row[1]) << QString::fromUtf8(row[2]);
    }

    void drop()
    {
        QFETCH(QString, dropped);
        QFETCH(QString, expected);

        QList<QUrl> urls;
        for (const QString &entry : dropped.split('|'))
            urls << (entry.contains("://") ? QUrl(entry)
                                           : QUrl::fromLocalFile(root_ + '/' + entry));
        QStringList expected_paths;
        for (const QString &entry : expected.split('|', Qt::SkipEmptyParts))
            expected_paths << root_ + '/' + entry;

        drop_files_widget widget;
        widget.setAcceptDrops(true);
        QSignalSpy spy(&widget, &drop_files_widget::files_dropped);
        QMimeData mime;
        mime.setUrls(urls);
        // Qt hands a drop only to a widget that has accepted the drag's entry,
        // as on the desktop.
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &enter);
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QApplication::sendEvent(&widget, &event);
        QVERIFY(event.isAccepted());
        QCOMPARE(spy.count(), 1); // also for a drop that gives nothing
        QCOMPARE(spy.at(0).at(0).toStringList(), expected_paths);
    }

private:
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
