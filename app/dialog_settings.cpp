#include "dialog_settings.h"

#include "language.h"

#include <vn/combobox.h>
#include <vn/datetime_format_selector.h>
#include <vn/panel.h>

#include <QGridLayout>
#include <QLabel>
#include <QSettings>
#include <QVBoxLayout>

dialog_settings::dialog_settings(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Settings"));
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    setStyleSheet(QStringLiteral("color: rgb(198,213,210)"));

    auto *column = new QVBoxLayout(this);
    column->setSpacing(0);
    column->setContentsMargins(0, 0, 0, 0);

    datetime_selector_ = new vn::datetime_format_selector(this);
    column->addWidget(datetime_selector_);

    auto *language_content = new QWidget;
    auto *grid = new QGridLayout(language_content);
    grid->setContentsMargins(20, 20, 20, 20);
    language_box_ = new vn::combobox(language_content);
    language_box_->setCurrentIndex(-1);
    language_box_->setInsertPolicy(QComboBox::InsertAlphabetically);
    // The names of the languages are written in their own language.
    language_box_->addItem(QStringLiteral("English"), QStringLiteral("en"));
    language_box_->addItem(QStringLiteral("Deutsch"), QStringLiteral("de"));
    grid->addWidget(new QLabel(tr("Language"), language_content), 0, 0);
    grid->addWidget(language_box_, 0, 1);
    column->addWidget(new vn::panel(language_content, this));

    const bool german = current_language() == QLatin1String("de");
    language_box_->setCurrentIndex(language_box_->findData(german ? "de" : "en"));
    // Connected only now, so that showing the stored choice doesn't write it.
    connect(language_box_, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &dialog_settings::on_language_changed);

    setFixedSize(sizeHint());
}

dialog_settings::~dialog_settings() = default;

void dialog_settings::on_language_changed()
{
    QSettings settings;
    settings.setValue(QStringLiteral("lang"), language_box_->currentData().toString());
}
