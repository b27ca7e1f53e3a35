#pragma once

#include <QMap>
#include <QString>

#include <map>
#include <string>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace vn {

// Component name to the 7-hex-digit revision of the repository the build came
// from, or "unknown (not built from git)". Rows: application, vn_infrastructure,
// vn_toolkit. Fixed for the life of the process.
extern const std::map<std::string, std::string> component_versions;

// "Component: application\tVersion: 1a2b3c4\n", one line per row, in key order.
std::string component_report();

// Platform, compiler, build time, application and component versions, and the
// entries of `extra_info` ("key:\t\tvalue") when there are any.
QString application_report(const QMap<QString, QString> &extra_info);

// Shows application_report() in an information box and returns when it is
// closed. GUI thread only.
void show_application_report(QWidget *parent, const QMap<QString, QString> &extra_info);

// Every network interface: its name line, a tab and its flags joined by "|",
// and one "\tAddress: ip/prefix" line per address. Empty without interfaces.
QString network_report();

} // namespace vn
