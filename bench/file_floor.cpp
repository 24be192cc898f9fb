// The floor under a whole vlnogui run: only the file work that a run which
// changes every file cannot avoid. It reads the project file, every module
// and every page it lists, and writes each of them back, and each page's
// working copy in_use/<page>.vlm, through a temporary file in the same
// directory and rename, as the engine writes. Nothing is parsed or marked.
//   file_floor <project file>       (run in the project's directory)
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

bool ReadWhole(const std::string &path, std::string &text) {
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    struct stat st;
    if (fstat(fd, &st) != 0) {
        close(fd);
        return false;
    }
    text.resize(static_cast<size_t>(st.st_size));
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = read(fd, text.data() + done, text.size() - done);
        if (n <= 0) break;
        done += static_cast<size_t>(n);
    }
    close(fd);
    return done == text.size();
}

bool WriteWhole(const std::string &path, const std::string &text) {
    const size_t slash = path.rfind('/');
    std::string temp = (slash == std::string::npos ? "." : path.substr(0, slash)) + "/.floorXXXXXX";
    const int fd = mkostemp(temp.data(), O_CLOEXEC);
    if (fd < 0) return false;
    bool ok = write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ok = fchmod(fd, 0644) == 0 && ok;
    ok = close(fd) == 0 && ok;
    return ok && rename(temp.c_str(), path.c_str()) == 0;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: file_floor <project file>\n");
        return 2;
    }
    std::string project;
    if (!ReadWhole(argv[1], project)) return 1;
    // The listed files: the lines after "Source files:" and "HTML Files :",
    // up to the options.
    std::vector<std::string> modules, pages;
    std::vector<std::string> *section = nullptr;
    for (size_t at = 0, end; at < project.size(); at = end + 1) {
        end = project.find('\n', at);
        if (end == std::string::npos) end = project.size();
        const std::string line = project.substr(at, end - at);
        if (line == "Source files:")
            section = &modules;
        else if (line == "HTML Files :")
            section = &pages;
        else if (line == "Project Options :")
            break;
        else if (section && !line.empty())
            section->push_back(line);
    }
    mkdir("in_use", 0777);
    std::string text;
    bool ok = WriteWhole(argv[1], project);
    for (const std::string &module : modules)
        ok = ReadWhole(module, text) && WriteWhole(module, text) && ok;
    for (const std::string &page : pages)
        ok = ReadWhole(page, text) && WriteWhole("in_use/" + page + ".vlm", text) &&
             WriteWhole(page, text) && ok;
    return ok ? 0 : 1;
}
