#include <vn/dialog_3rd_part_lib_info.h>

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QTextEdit>
#include <QVBoxLayout>

namespace vn {

dialog_3rd_part_lib_info::dialog_3rd_part_lib_info(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("About 3rd party libraries"));
    setStyleSheet(QStringLiteral("QDialog{background-color:rgb(47,47,47); color:rgb(198,213,210);}"
                                 "QToolTip { border:1px solid rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47); }"));
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);

    layout_ = new QVBoxLayout(this);
    layout_->setContentsMargins(20, 10, 20, 10);
    layout_->setSpacing(10);

    auto *intro = new QLabel(tr("%1 uses the following open source and/or 3rd party libraries:")
                                 .arg(QGuiApplication::applicationDisplayName()),
                             this);
    intro->setStyleSheet(QStringLiteral("font-size:16px;"));
    layout_->addWidget(intro);
}

dialog_3rd_part_lib_info::~dialog_3rd_part_lib_info() = default;

void dialog_3rd_part_lib_info::add_entry(const entry &e)
{
    auto *box = new QVBoxLayout;
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(5);

    auto *name = new QLabel(e.name, this);
    name->setStyleSheet(QStringLiteral("font-size:14px; font-weight:bold;"));
    box->addWidget(name);

    auto *text = new QLabel(e.text, this);
    text->setStyleSheet(QStringLiteral("font-size:12px;"));
    text->setWordWrap(true);
    text->setTextFormat(Qt::RichText);
    text->setOpenExternalLinks(true);
    box->addWidget(text);

    if (!e.file.isEmpty()) {
        QFile file(e.file);
        if (file.open(QIODevice::ReadOnly)) {
            QByteArray bytes = file.readAll();
            const int nul = bytes.indexOf('\0');
            if (nul >= 0)
                bytes.truncate(nul);
            auto *edit = new QTextEdit(this);
            edit->setReadOnly(true);
            edit->setPlainText(QString::fromUtf8(bytes));
            box->addWidget(edit);
        } else {
            qWarning("%s: Could not open '%s': %s", Q_FUNC_INFO, qUtf8Printable(e.file),
                     qUtf8Printable(file.errorString()));
            auto *missing = new QLabel(tr("Could not open %1").arg(e.file), this);
            missing->setTextFormat(Qt::PlainText);
            missing->setStyleSheet(QStringLiteral("font-size:12px;"));
            box->addWidget(missing);
        }
    }
    layout_->addLayout(box);
}

// Blocks in the modal loop until the dialog is closed. GUI thread only.
int dialog_3rd_part_lib_info::exec()
{
    setFixedSize(sizeHint());
    return QDialog::exec();
}

} // namespace vn
