#include "dialog_write_result.h"

#include <vn/message_box.h>

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>

namespace {

const QString list_sheet = QStringLiteral(
    "QPlainTextEdit { border: 1px solid rgb(99,99,99); background-color: rgb(38,38,38); }"
    "QScrollBar:vertical { background: rgb(47,47,47); width: 11px; margin: 0; }"
    "QScrollBar::handle:vertical { background: black; border-radius: 5px; min-height: 20px; }"
    "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }"
    "QToolTip { border: 1px solid rgb(99,99,99); background-image: none;"
    " background-color: rgb(47,47,47); }");

} // namespace

dialog_write_result::dialog_write_result(const gps_writer::result &result, bool undo,
                                         QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint)
{
    setWindowTitle(undo ? tr("Not all files were written back") : tr("Not all files were written"));
    setStyleSheet(QStringLiteral("* {background-color: rgb(47,47,47);color: rgb(198,213,210); }") +
                  vn::message_box::button_style_sheet() + list_sheet);

    auto *icon = new QLabel(this);
    const int icon_size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()
                        ->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this)
                        .pixmap(icon_size, icon_size));
    icon->setAlignment(Qt::AlignTop);
    auto *text = new QLabel(summary(result, undo), this);
    text->setObjectName(QStringLiteral("summary"));
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);

    list_ = new QPlainTextEdit(list_text(result), this);
    list_->setObjectName(QStringLiteral("failures"));
    list_->setReadOnly(true);
    list_->setLineWrapMode(QPlainTextEdit::NoWrap);
    list_->setMinimumSize(560, 160);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    QPushButton *copy = buttons->addButton(tr("Copy list"), QDialogButtonBox::ActionRole);
    copy->setToolTip(tr("Copy the files and their reasons to the clipboard"));
    connect(copy, &QPushButton::clicked, this, &dialog_write_result::copy_list);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto *grid = new QGridLayout(this);
    grid->addWidget(icon, 0, 0);
    grid->addWidget(text, 0, 1);
    grid->addWidget(list_, 1, 0, 1, 2);
    grid->addWidget(buttons, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
}

QString dialog_write_result::summary(const gps_writer::result &result, bool undo)
{
    QStringList lines;
    lines << (undo ? tr("Written back: %1") : tr("Written: %1")).arg(result.written);
    if (result.left_alone > 0)
        lines << tr("Left alone, with a position of their own: %1").arg(result.left_alone);
    lines << tr("Failed: %1").arg(result.failures.size());
    return lines.join(QLatin1Char('\n'));
}

QString dialog_write_result::list_text(const gps_writer::result &result)
{
    QStringList lines;
    for (const gps_writer::failure &f : result.failures)
        lines << QDir::toNativeSeparators(f.path) + QStringLiteral(": ") + f.reason;
    return lines.join(QLatin1Char('\n'));
}

void dialog_write_result::copy_list()
{
    QApplication::clipboard()->setText(list_->toPlainText());
}
