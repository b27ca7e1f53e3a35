#pragma once

#include <QString>
#include <QtGlobal>

#include <atomic>

// Counts Qt's "Destroyed while process" warnings and passes every message on
// to the handler that was installed before (QtTest's), so ignoreMessage still
// works. A test's cleanupTestCase expects a count of zero.
class process_warning_counter
{
public:
    static void install() { previous() = qInstallMessageHandler(&handle); }
    static int count() { return counter().load(); }

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        if (type == QtWarningMsg && text.contains(QLatin1String("Destroyed while process")))
            ++counter();
        if (previous())
            previous()(type, context, text);
    }
    static QtMessageHandler &previous()
    {
        static QtMessageHandler handler = nullptr;
        return handler;
    }
    static std::atomic<int> &counter()
    {
        static std::atomic<int> value{0};
        return value;
    }
};
