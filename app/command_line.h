#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

// What the program was started with: files and folders to load, or a text to
// print before ending. A file manager's "Open with" passes its files here.
// Qt's own options (-platform, -style, ...) are gone by then: QApplication
// takes them out of the argument vector. Nothing is checked on disk here; the
// paths go to the window's load, which keeps what a drop would keep.
class command_line
{
    Q_DECLARE_TR_FUNCTIONS(command_line)

public:
    // Reads `arguments` (program name first, as QCoreApplication::arguments()
    // gives them). A relative path is taken from `working_folder`, so that
    // "loxmere photo.jpg" names the photo the shell sees; "" stays empty
    // rather than naming the working folder. "--" ends the options:
    // "loxmere -- -x.jpg" loads a file named "-x.jpg". Needs the application
    // object: the help text names the program by its first argument.
    // "--help-all" prints Qt's help and ends the process from here.
    static command_line parse(const QStringList &arguments, const QString &working_folder);

    // Prints `output`, to standard error when exit_code isn't 0; returns
    // exit_code.
    int report() const;

    bool run = true;   // false: the program prints `output` and ends
    QStringList paths; // when it runs: absolute, in the given order
    QString output;    // "--help", "--version", or the error with the usage
    int exit_code = 0; // 2 for an option the program doesn't know
};
