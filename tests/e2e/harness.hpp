// The world of an end-to-end run of vlnogui: a temporary directory holding a
// test distribution (templates, global option file and the thirteen scripts,
// each of which logs its call as one line "<script>: [arg] [arg] ..."), a
// HOME without option files and a project directory. Runs the built program
// there and takes stock of every file it left.
#ifndef VELMORA_TESTS_E2E_HARNESS_HPP
#define VELMORA_TESTS_E2E_HARNESS_HPP

#include "support/file_texts.hpp"
#include "support/run_program.hpp"
#include "support/temp_dir.hpp"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace fs = std::filesystem;

// Every file and directory under dir: relative path to contents, "<dir>" for
// a directory. Paths that begin with one of the skipped prefixes are left out.
inline std::map<std::string, std::string> snapshot(const std::string &dir,
                                                   const std::vector<std::string> &skipped = {}) {
    std::map<std::string, std::string> files;
    for (const auto &entry : fs::recursive_directory_iterator(dir)) {
        const std::string rel = fs::relative(entry.path(), dir).string();
        bool skip = false;
        for (const std::string &prefix : skipped)
            skip = skip || rel.compare(0, prefix.size(), prefix) == 0;
        if (skip) continue;
        files[rel] = entry.is_directory() ? "<dir>" : readText(entry.path().string());
    }
    return files;
}

class E2eWorld {
  public:
    static constexpr const char *kScripts[] = {
        "vlreadprj.sh",   "vlwriteprj.sh", "vlreadmodule.sh", "vlwritemodule.sh", "vlreadhtml.sh",
        "vlwritehtml.sh", "vltest.sh",     "vlinst.sh",       "vlrel1.sh",        "vlrel2.sh",
        "vlmake.sh",      "vledithtml.sh", "vlbrowser.sh"};

    E2eWorld() {
        fs::create_directories(root_.file("dist/config"));
        fs::create_directories(root_.file("home"));
        fs::create_directories(root_.file("proj"));
        root_.write("dist/config/VlKeyWds.ini", "");
        for (const char *script : kScripts)
            fs::permissions(root_.write(std::string("dist/bin/") + script, kLoggingScript),
                            fs::perms::owner_all);
    }

    std::string path(const std::string &name = "") const {
        return name.empty() ? root_.path() : root_.file(name);
    }
    // Writes a file of the distribution, the home or the project (the name
    // begins with "dist/", "home/" or "proj/").
    void write(const std::string &name, const std::string &text) const { root_.write(name, text); }
    std::string read(const std::string &name) const { return root_.read(name); }

    // Runs vlnogui with the test distribution, in the project directory
    // unless another directory of the world is named.
    ProgramRun run(const std::vector<std::string> &args, const std::string &where = "proj") const {
        std::vector<std::string> env = {"PATH=" + path("dist/bin") + ":/usr/bin:/bin",
                                        "HOME=" + path("home"), "VELMORA=" + path("dist"),
                                        "VL_SCRIPT_LOG=" + path("scripts.log")};
        return runProgram(VLNOGUI_PATH, args, env, path(where));
    }

    // The script calls logged so far; the log starts again empty.
    std::string scripts() const {
        std::string log = read("scripts.log");
        fs::remove(path("scripts.log"));
        return log;
    }
    std::map<std::string, std::string> project(const std::vector<std::string> &skipped = {}) const {
        return snapshot(path("proj"), skipped);
    }

  private:
    TempDir root_;
};

#endif
