// A fresh temporary directory for one test, removed with its contents at the
// end; the working directory is left as it was.
#ifndef VELMORA_TESTS_UTIL_TEMPDIR_HPP
#define VELMORA_TESTS_UTIL_TEMPDIR_HPP

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class TempDir {
  public:
    TempDir() {
        std::string pattern = (std::filesystem::temp_directory_path() / "vltestXXXXXX").string();
        path_ = mkdtemp(pattern.data()) ? pattern : std::string();
    }
    ~TempDir() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;

    const std::string &path() const { return path_; }
    std::string file(const std::string &name) const { return path_ + "/" + name; }
    // Writes text as the whole content of name and returns the full path.
    std::string write(const std::string &name, const std::string &text) const {
        std::ofstream(file(name), std::ios::binary) << text;
        return file(name);
    }
    std::string read(const std::string &name) const {
        std::ifstream in(file(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

  private:
    std::string path_;
};

#endif
