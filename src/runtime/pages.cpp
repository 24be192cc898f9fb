// Reading pages and other files from the HTML directory with the checks that
// keep a name from the request from reaching any other file: relative names
// without "..", real paths inside the directory, registered pages only.
#include "runtime/pages.hpp"

#include "runtime/registration.hpp"
#include "runtime/settings.hpp"

#include <climits>
#include <cstdio>
#include <cstdlib>

namespace vlrun {

namespace {

std::string RealPath(const std::string &path) {
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) ? std::string(resolved) : std::string();
}

bool ReadWhole(const std::string &path, std::string &content) {
    std::FILE *f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    content.clear();
    char buffer[65536];
    std::size_t n = 0;
    while ((n = std::fread(buffer, 1, sizeof buffer, f)) > 0)
        content.append(buffer, n);
    bool ok = !std::ferror(f);
    std::fclose(f);
    return ok;
}

// The file's real path when name is acceptable and the file lies inside the
// HTML directory; empty otherwise.
std::string InsideHtmlDir(std::string_view name) {
    if (name.empty() || name[0] == '/' || name.find("..") != std::string_view::npos ||
        name.find('\0') != std::string_view::npos)
        return {};
    std::string dir = RealPath(HtmlDir());
    std::string file = RealPath(HtmlDir() + "/" + std::string(name));
    if (dir.empty() || file.size() <= dir.size() + 1 || file.compare(0, dir.size(), dir) != 0 ||
        (file[dir.size()] != '/' && dir != "/"))
        return {};
    return file;
}

} // namespace

std::string HtmlDir() {
    const std::string &dir = TheSettings().htmlDir;
    return dir.empty() ? ProgramDir() : FromProgramDir(dir);
}

bool ReadHtmlDirFile(std::string_view name, std::string &content) {
    std::string file = InsideHtmlDir(name);
    return !file.empty() && ReadWhole(file, content);
}

bool ReadPage(std::string_view name, std::string &text, std::string &message) {
    message = "The page " + std::string(name) + " is not part of this application.";
    if (!IsRegisteredPage(name)) {
        std::fprintf(stderr, "vlrun: page %.*s is not registered\n", static_cast<int>(name.size()),
                     name.data());
        return false;
    }
    if (!ReadHtmlDirFile(name, text)) {
        std::fprintf(stderr, "vlrun: page %.*s not found in the HTML directory %s\n",
                     static_cast<int>(name.size()), name.data(), HtmlDir().c_str());
        return false;
    }
    return true;
}

std::string ContentTypeOf(std::string_view name) {
    struct Type {
        const char *extension;
        const char *type;
    };
    static constexpr Type kTypes[] = {
        {".html", "text/html; charset=utf-8"},
        {".htm", "text/html; charset=utf-8"},
        {".txt", "text/plain; charset=utf-8"},
        {".css", "text/css"},
        {".js", "text/javascript"},
        {".json", "application/json"},
        {".svg", "image/svg+xml"},
        {".gif", "image/gif"},
        {".png", "image/png"},
        {".jpg", "image/jpeg"},
        {".jpeg", "image/jpeg"},
        {".pdf", "application/pdf"},
        {".class", "application/java-vm"},
    };
    std::size_t dot = name.rfind('.');
    std::string_view extension = dot == std::string_view::npos ? "" : name.substr(dot);
    for (const Type &t : kTypes)
        if (extension == t.extension) return t.type;
    return "application/octet-stream";
}

} // namespace vlrun
