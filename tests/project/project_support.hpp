// Helpers of the project tests: a scoped environment variable and a clean
// current project with its option files and distribution directory forgotten.
#ifndef VELMORA_TESTS_PROJECT_SUPPORT_HPP
#define VELMORA_TESTS_PROJECT_SUPPORT_HPP

#include "project/options.h"
#include "project/project.h"

#include <cstdlib>
#include <optional>
#include <string>

// Sets an environment variable (null: unsets it) and restores it at the end.
class EnvVar {
  public:
    EnvVar(const char *name, const char *value) : name_(name) {
        if (const char *old = getenv(name)) old_ = old;
        set(value);
    }
    ~EnvVar() { set(old_ ? old_->c_str() : nullptr); }
    void set(const char *value) {
        if (value)
            setenv(name_.c_str(), value, 1);
        else
            unsetenv(name_.c_str());
    }

  private:
    std::string name_;
    std::optional<std::string> old_;
};

// Forgets every process-wide project state the tests touch.
inline void resetProjectState() {
    VlProjDelete();
    VlCmdLineClearOptions();
    VlProjResetOptionFiles();
    VlResetDistDir();
}

#endif
