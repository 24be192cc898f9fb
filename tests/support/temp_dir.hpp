// Scratch space for tests: a temporary directory removed with its contents at
// the end, whole-file reads and writes, and scoped changes of the working
// directory and of one environment variable.
#ifndef VELMORA_TESTS_SUPPORT_TEMP_DIR_HPP
#define VELMORA_TESTS_SUPPORT_TEMP_DIR_HPP

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace fs = std::filesystem;

inline std::string ReadText(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// Writes text as the whole content of path, creating missing parent folders.
inline void WriteText(const std::string &path, const std::string &text) {
    std::error_code ec;
    fs::create_directories(fs::path(path).parent_path(), ec);
    std::ofstream(path, std::ios::binary) << text;
}

class TempDir {
  public:
    TempDir() {
        std::string pattern = (fs::temp_directory_path() / "vltestXXXXXX").string();
        path_ = mkdtemp(pattern.data()) ? pattern : std::string();
    }
    ~TempDir() {
        std::error_code ec;
        fs::remove_all(path_, ec);
    }
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;

    const std::string &Path() const { return path_; }
    std::string File(const std::string &name) const { return path_ + "/" + name; }
    // Writes text as the whole content of name and returns the full path.
    std::string Write(const std::string &name, const std::string &text) const {
        WriteText(File(name), text);
        return File(name);
    }
    std::string Read(const std::string &name) const { return ReadText(File(name)); }

  private:
    std::string path_;
};

// Makes dir the working directory and returns to the old one at the end.
class ScopedCwd {
  public:
    explicit ScopedCwd(const std::string &dir) : old_(fs::current_path()) { fs::current_path(dir); }
    ~ScopedCwd() { fs::current_path(old_); }
    ScopedCwd(const ScopedCwd &) = delete;
    ScopedCwd &operator=(const ScopedCwd &) = delete;

  private:
    fs::path old_;
};

// Sets an environment variable (null: unsets it) and restores it at the end.
class ScopedEnv {
  public:
    ScopedEnv(const char *name, const char *value) : name_(name) {
        if (const char *old = getenv(name)) old_ = old;
        Set(value);
    }
    ~ScopedEnv() { Set(old_ ? old_->c_str() : nullptr); }
    ScopedEnv(const ScopedEnv &) = delete;
    ScopedEnv &operator=(const ScopedEnv &) = delete;
    void Set(const char *value) {
        if (value)
            setenv(name_.c_str(), value, 1);
        else
            unsetenv(name_.c_str());
    }

  private:
    std::string name_;
    std::optional<std::string> old_;
};

#endif
