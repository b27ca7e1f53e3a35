#pragma once

#include <QProcess>

namespace vn {

// The ExifTool process. Should this program end without stopping it (a
// crash, a kill), ExifTool would stay behind and read its empty pipe every
// 10 ms for ever. On Linux the system stops it then, with the interrupt
// signal: ExifTool holds that back while it copies a written file back in
// place, so the file is whole when it ends, and removes its temporary file.
class exiftool_process : public QProcess
{
public:
    explicit exiftool_process(QObject *parent = nullptr);

protected:
    // Runs in the child between fork and exec: system calls only.
    void setupChildProcess() override;

private:
    qint64 parent_pid_;
};

} // namespace vn
