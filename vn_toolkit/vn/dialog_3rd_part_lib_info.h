#pragma once

#include <QDialog>
#include <QString>

QT_BEGIN_NAMESPACE
class QVBoxLayout;
QT_END_NAMESPACE

namespace vn {

// Lists the open-source libraries and other third-party parts that the
// application uses, one entry below the other. A local value for one use:
// fill it with add_entry, then exec(), which blocks in a modal event loop.
// GUI thread only.
class dialog_3rd_part_lib_info : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY(dialog_3rd_part_lib_info)

public:
    struct entry
    {
        QString name; // "Qt 5.15.8"
        QString text; // what it is, its licence and where its source is
        QString file; // a licence text among the resources, or empty
    };

    explicit dialog_3rd_part_lib_info(QWidget *parent = nullptr);
    ~dialog_3rd_part_lib_info() override;

    // Adds the entry below the ones before. A `file` that can't be opened
    // shows a line naming it in place of its text.
    void add_entry(const entry &e);

public slots:
    // Fixes the size to the size hint, then runs the modal loop.
    int exec() override;

private:
    QVBoxLayout *layout_ = nullptr;
};

} // namespace vn
