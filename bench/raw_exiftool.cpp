#include "raw_exiftool.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/personality.h>
#include <sys/wait.h>
#include <unistd.h>

raw_exiftool::~raw_exiftool()
{
    stop();
}

void raw_exiftool::steady_child_speed()
{
    // Inherited through fork and exec by every child.
    const int current = personality(0xffffffff);
    if (current == -1 || personality(static_cast<unsigned long>(current) | ADDR_NO_RANDOMIZE) == -1)
        std::fprintf(stderr, "could not turn address randomisation off for ExifTool\n");
    setenv("PERL_HASH_SEED", "0", 1);
    setenv("PERL_PERTURB_KEYS", "0", 1);
    std::printf("ExifTool processes of this run: fixed address layout and hash seed\n");
}

std::vector<std::string> raw_exiftool::program_arguments()
{
    return {"-stay_open",    "1",     "-@",    "-",     "-common_args", "-charset",
            "filename=utf8", "-args", "-sort", "-fast", "-userParam",   "processOwner=Loxmere"};
}

bool raw_exiftool::start(const std::string &program, const std::vector<std::string> &args)
{
    int in[2];
    int out[2];
    if (pipe(in) != 0 || pipe(out) != 0)
        return false;
    pid_ = fork();
    if (pid_ < 0)
        return false;
    if (pid_ == 0) {
        dup2(in[0], 0);
        dup2(out[1], 1);
        const int null_fd = open("/dev/null", O_WRONLY);
        dup2(null_fd, 2);
        close(in[0]);
        close(in[1]);
        close(out[0]);
        close(out[1]);
        std::vector<char *> argv;
        argv.push_back(const_cast<char *>(program.c_str()));
        for (const std::string &arg : args)
            argv.push_back(const_cast<char *>(arg.c_str()));
        argv.push_back(nullptr);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    close(in[0]);
    close(out[1]);
    to_ = in[1];
    from_ = out[0];
    return true;
}

bool raw_exiftool::run(const std::string &command, int id, std::string *reply)
{
    if (!write_all(command + "\n-execute" + std::to_string(id) + "\n"))
        return false;
    const std::string marker = "{ready" + std::to_string(id) + "}\n";
    char chunk[2048];
    for (;;) {
        const size_t at = buffer_.find(marker);
        if (at != std::string::npos) {
            *reply = buffer_.substr(0, at);
            buffer_.erase(0, at + marker.size());
            return true;
        }
        const ssize_t n = read(from_, chunk, sizeof chunk);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        buffer_.append(chunk, size_t(n));
    }
}

std::string raw_exiftool::run(const std::string &command)
{
    std::string reply;
    if (!run(command, next_id_++, &reply))
        reply.clear();
    return reply;
}

void raw_exiftool::stop()
{
    if (pid_ <= 0)
        return;
    write_all("-stay_open\n0\n");
    close(to_);
    close(from_);
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
}

bool raw_exiftool::write_all(const std::string &text)
{
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::write(to_, text.data() + done, text.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += size_t(n);
    }
    return true;
}
