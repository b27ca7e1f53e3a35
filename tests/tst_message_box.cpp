#include "modal_watcher.h"
#include <vn/input_dialog.h>
#include <vn/message_box.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QPushButton>
#include <QtTest>

static QStringList button_texts(QWidget *dialog)
{
    QStringList texts;
    const auto *box = dialog->findChild<QDialogButtonBox *>();
    for (QAbstractButton *button : box->buttons())
        texts << button->text();
    texts.sort();
    return texts;
}

class tst_message_box : public QObject
{
    Q_OBJECT

private slots:
    void default_button_data();
    void default_button();
    void static_forms_return_the_clicked_button();
    void text_forms_data();
    void text_forms();
    void get_item_data();
    void get_item();
    void number_getters_keep_value_on_cancel();
    void get_text_labels_and_cancel();
};

void tst_message_box::default_button_data()
{
    using B = QMessageBox;
    QTest::addColumn<int>("buttons");
    QTest::addColumn<int>("default_button");
    QTest::addColumn<int>("expected"); // NoButton: no default set
    QTest::addRow("OK alone, no default: accept role wins") << int(B::Ok) << 0 << int(B::Ok);
    QTest::addRow("Yes/No, no default: none set") << int(B::Yes | B::No) << 0 << 0;
    QTest::addRow("Yes/No, default No") << int(B::Yes | B::No) << int(B::No) << int(B::No);
    QTest::addRow("default not among buttons: no effect") << int(B::Yes | B::No) << int(B::Ok) << 0;
    QTest::addRow("Save and Open, no default: the lower value with accept role")
        << int(B::Save | B::Open) << 0 << int(B::Save);
}

void tst_message_box::default_button()
{
    QFETCH(int, buttons);
    QFETCH(int, default_button);
    QFETCH(int, expected);

    vn::message_box box(QMessageBox::Question, "t", "x", QMessageBox::NoButton, nullptr);
    vn::message_box::add_buttons(box, QMessageBox::StandardButtons(buttons),
                                 QMessageBox::StandardButton(default_button));
    QCOMPARE(int(box.standardButtons()), buttons);
    QPushButton *def = box.defaultButton();
    QCOMPARE(def ? int(box.standardButton(def)) : int(QMessageBox::NoButton), expected);
}

void tst_message_box::static_forms_return_the_clicked_button()
{
    using B = QMessageBox;
    using form = B::StandardButton (*)(QWidget *, const QString &, const QString &,
                                       B::StandardButtons, B::StandardButton);
    const struct
    {
        form show;
        B::StandardButton click;
        B::Icon icon;
    } cases[] = {{&vn::message_box::information, B::Ok, B::Information},
                 {&vn::message_box::question, B::No, B::Question},
                 {&vn::message_box::warning, B::Ok, B::Warning},
                 {&vn::message_box::critical, B::Ok, B::Critical}};
    for (const auto &c : cases) {
        int seen_icon = -1;
        QString seen_title;
        modal_watcher watcher([&](QWidget *w) {
            auto *box = qobject_cast<QMessageBox *>(w);
            seen_icon = box->icon();
            seen_title = box->windowTitle();
            box->button(c.click)->click();
        });
        const auto buttons = c.icon == B::Question ? B::Yes | B::No : B::StandardButtons(B::Ok);
        QCOMPARE(c.show(nullptr, "Title", "Text", buttons, B::NoButton), c.click);
        QCOMPARE(seen_icon, int(c.icon));
        QCOMPARE(seen_title, QString("Title"));
    }
}

void tst_message_box::text_forms_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("click_text");
    QTest::addColumn<int>("expected");
    const QStringList two = {"Go on", "Stop"}, four = two + QStringList{"All", "None"};
    QTest::addRow("two texts, yes") << two << "Go on" << int(QMessageBox::Yes);
    QTest::addRow("two texts, no") << two << "Stop" << int(QMessageBox::No);
    QTest::addRow("three texts, cancel")
        << two + QStringList{"Later"} << "Later" << int(QMessageBox::Cancel);
    QTest::addRow("three texts, escape counts as cancel")
        << two + QStringList{"Later"} << "Escape" << int(QMessageBox::Cancel);
    QTest::addRow("four texts, yes to all") << four << "All" << int(QMessageBox::YesToAll);
    QTest::addRow("four texts, no to all") << four << "None" << int(QMessageBox::NoToAll);
}

void tst_message_box::text_forms()
{
    QFETCH(QStringList, texts);
    QFETCH(QString, click_text);
    QFETCH(int, expected);
    QStringList seen;
    modal_watcher watcher([&](QWidget *box) {
        seen = button_texts(box);
        if (click_text == "Escape")
            QTest::keyClick(box, Qt::Key_Escape);
        else
            modal_watcher::click(box, click_text);
    });
    QMessageBox::StandardButton result = QMessageBox::NoButton;
    if (texts.size() == 2)
        result = vn::message_box::question(nullptr, "t", "x", texts[0], texts[1]);
    else if (texts.size() == 3)
        result = vn::message_box::question(nullptr, "t", "x", texts[0], texts[1], texts[2]);
    else
        result =
            vn::message_box::question(nullptr, "t", "x", texts[0], texts[1], texts[2], texts[3]);
    texts.sort();
    QCOMPARE(seen, texts);
    QCOMPARE(int(result), expected);
}

void tst_message_box::get_item_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<bool>("accept");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("expected_ok");
    QTest::addRow("current 1, accept") << 1 << true << "two" << true;
    QTest::addRow("current 1, cancel gives the current item") << 1 << false << "two" << false;
    QTest::addRow("current -1, cancel gives empty") << -1 << false << "" << false;
    QTest::addRow("past the end, cancel gives empty") << 3 << false << "" << false;
    QTest::addRow("past the end, accept gives first shown") << 3 << true << "one" << true;
}

void tst_message_box::get_item()
{
    QFETCH(int, current);
    QFETCH(bool, accept);
    QFETCH(QString, expected);
    QFETCH(bool, expected_ok);

    QString shown;
    modal_watcher watcher([&](QWidget *w) {
        if (auto *combo = w->findChild<QComboBox *>())
            shown = combo->currentText();
        auto *dialog = qobject_cast<QDialog *>(w);
        accept ? dialog->accept() : dialog->reject();
    });
    bool ok = !expected_ok;
    const QString result = vn::input_dialog::get_item(nullptr, "Track", "Pick one",
                                                      {"one", "two", "three"}, current, false, &ok);
    QCOMPARE(result, expected);
    QCOMPARE(ok, expected_ok);
    // Outside the list the box shows its first item.
    QCOMPARE(shown, current >= 0 && current < 3 ? QStringList({"one", "two", "three"})[current]
                                                : QString("one"));
}

void tst_message_box::number_getters_keep_value_on_cancel()
{
    bool accept = false;
    modal_watcher watcher([&](QWidget *w) {
        auto *input = qobject_cast<QInputDialog *>(w);
        if (input->inputMode() == QInputDialog::DoubleInput)
            input->setDoubleValue(2.5);
        accept ? input->accept() : input->reject();
    });
    bool ok = true;
    QCOMPARE(vn::input_dialog::get_int(nullptr, "t", "l", 7, 0, 10, 1, &ok), 7);
    QVERIFY(!ok);
    QCOMPARE(vn::input_dialog::get_double(nullptr, "t", "l", 1.25, 0, 10, 2, &ok), 1.25);
    accept = true;
    QCOMPARE(vn::input_dialog::get_double(nullptr, "t", "l", 1.25, 0, 10, 2, &ok), 2.5);
    QVERIFY(ok);
}

void tst_message_box::get_text_labels_and_cancel()
{
    QStringList seen;
    bool accept = false;
    modal_watcher watcher([&](QWidget *w) {
        seen = button_texts(w);
        accept ? qobject_cast<QDialog *>(w)->accept() : qobject_cast<QDialog *>(w)->reject();
    });
    bool ok = true;
    QCOMPARE(vn::input_dialog::get_text(nullptr, "t", "l", QLineEdit::Normal, "start", &ok,
                                        Qt::WindowFlags(), Qt::ImhNone, "Take", "Leave"),
             QString());
    QVERIFY(!ok);
    QCOMPARE(seen, QStringList({"Leave", "Take"}));
    accept = true;
    QCOMPARE(vn::input_dialog::get_multi_line_text(nullptr, "t", "l", "a\nb", &ok),
             QString("a\nb"));
    QVERIFY(ok);
}

QTEST_MAIN(tst_message_box)
#include "tst_message_box.moc"
