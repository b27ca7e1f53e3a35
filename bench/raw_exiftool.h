#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

// A plain stay-open conversation with ExifTool for the benchmarks: fork/exec,
// one pipe each way, blocking reads, no Qt. It is what the program's bridge is
// measured against. POSIX only.
class raw_exiftool
{
public:
    raw_exiftool() = default;
    raw_exiftool(const raw_exiftool &) = delete;
    raw_exiftool &operator=(const raw_exiftool &) = delete;
    ~raw_exiftool();

    // Two ExifTool processes differ in speed by up to 15 %, each for its
    // whole life, with where the system happens to place its memory and how
    // Perl seeds its hashes. Called first thing in main, before any process
    // is started: every ExifTool started afterwards, the program's own and
    // this class's, gets the same fixed layout and seed, and the comparison
    // measures the two conversations rather than the two processes. Linux.
    static void steady_child_speed();

    // The arguments the program's worker starts ExifTool with.
    static std::vector<std::string> program_arguments();

    bool start(const std::string &program, const std::vector<std::string> &args);

    // Sends one command with the given id and reads until its marker
    // ("{ready<id>}\n", as ExifTool ends lines on this platform) closes the
    // reply. Bytes behind the marker stay for the next reply.
    bool run(const std::string &command, int id, std::string *reply);

    // The same with ids counted by the object.
    std::string run(const std::string &command);

    void stop();

private:
    bool write_all(const std::string &text);

    pid_t pid_ = -1;
    int to_ = -1;
    int from_ = -1;
    int next_id_ = 1000000; // apart from ids the caller counts itself
    std::string buffer_;
};
