#include "vn/diagnostics.h"

#include <vn/message_box.h>

#include <vn_revision.h>

#include <QCoreApplication>
#include <QNetworkInterface>
#include <QStringList>
#include <QSysInfo>

namespace vn {

// All three components are built from this one repository; VN_REVISION is
// rewritten by the build whenever HEAD moves.
const std::map<std::string, std::string> component_versions = {
    {"application", VN_REVISION},
    {"vn_infrastructure", VN_REVISION},
    {"vn_toolkit", VN_REVISION},
};

std::string component_report()
{
    std::string report;
    for (const auto &row : component_versions)
        report += "Component: " + row.first + "\tVersion: " + row.second + "\n";
    return report;
}

QString application_report(const QMap<QString, QString> &extra_info)
{
    QString text;
    text += QStringLiteral("OS: %1\n").arg(QSysInfo::prettyProductName());
    text += QStringLiteral("ABI: %1\n").arg(QSysInfo::buildAbi());
    // VN_COMPILER_NAME/VERSION are passed in by the build; "gcc Version: 12.2.0".
    text += QStringLiteral("%1 Version: %2\n")
                .arg(QStringLiteral(VN_COMPILER_NAME), QStringLiteral(VN_COMPILER_VERSION));
    text += QStringLiteral("\nApplication: %1\nVersion: %2\n")
                .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion());
    // __DATE__ " " __TIME__ reads "Nov 21 2023 10:19:18"; this file is compiled
    // again with every revision, so the time follows the build.
    text += QStringLiteral("Build: " __DATE__ " " __TIME__ "\n");
    text += QStringLiteral("\n") + QString::fromStdString(component_report());
    if (!extra_info.isEmpty()) {
        text += QStringLiteral("\n");
        for (auto it = extra_info.cbegin(); it != extra_info.cend(); ++it)
            text += QStringLiteral("%1:\t\t%2\n").arg(it.key(), it.value());
    }
    return text;
}

void show_application_report(QWidget *parent, const QMap<QString, QString> &extra_info)
{
    message_box::information(parent, QStringLiteral("Application Information"),
                             application_report(extra_info), QMessageBox::Ok,
                             QMessageBox::NoButton);
}

QString network_report()
{
    static const QList<QPair<QNetworkInterface::InterfaceFlag, QString>> flag_names = {
        {QNetworkInterface::IsUp, QStringLiteral("IsUp")},
        {QNetworkInterface::IsRunning, QStringLiteral("IsRunning")},
        {QNetworkInterface::CanBroadcast, QStringLiteral("CanBroadcast")},
        {QNetworkInterface::IsLoopBack, QStringLiteral("IsLoopBack")},
        {QNetworkInterface::IsPointToPoint, QStringLiteral("IsPointToPoint")},
        {QNetworkInterface::CanMulticast, QStringLiteral("CanMulticast")},
    };

    QString report;
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &interface : interfaces) {
        report += QStringLiteral("Interface: ") + interface.name() + QStringLiteral(" (") +
                  interface.humanReadableName() + QStringLiteral(") HW: ") +
                  interface.hardwareAddress() + QStringLiteral("\n");
        QStringList flags;
        for (const auto &flag : flag_names) {
            if (interface.flags().testFlag(flag.first))
                flags << flag.second;
        }
        report += QStringLiteral("\t") + flags.join(QLatin1Char('|')) + QStringLiteral("\n");
        const QList<QNetworkAddressEntry> entries = interface.addressEntries();
        for (const QNetworkAddressEntry &entry : entries) {
            report += QStringLiteral("\tAddress: ") + entry.ip().toString() + QStringLiteral("/") +
                      QString::number(entry.prefixLength()) + QStringLiteral("\n");
        }
    }
    return report;
}

} // namespace vn
