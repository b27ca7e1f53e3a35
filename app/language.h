#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QLocale;
class QWidget;
QT_END_NAMESPACE

// The language in force: the stored "lang" if there is one (taken as it is),
// else the system's language where a translation exists ("de"), else "en".
QString current_language();
// The same with `system` in place of QLocale::system(), which reads the
// environment once per process; tests pass the locale they need.
QString current_language(const QLocale &system);

// Installs Qt's, the application's and the toolkit's catalogues for
// current_language(). A catalogue that doesn't load is installed empty, which
// leaves the source texts. Once per process, before any window exists.
void install_translators();

// Asks whether to quit when the language differs from `old_language`; true
// when the application is quitting. Runs a nested event loop: GUI thread only.
bool confirm_language_change(QWidget *parent, const QString &old_language);

// Writes the help page of `name_template` (":/help/index_%1.html") for the
// current language, English where that page doesn't exist, to the temporary
// folder with the key names filled in, and opens it in the browser. The page
// is overwritten by the next call and never deleted. Returns the written
// file's name, or "" with a warning when the page can't be read.
QString show_help_page(const QString &name_template);
