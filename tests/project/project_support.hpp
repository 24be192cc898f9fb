// Helpers of the project tests: a scoped environment variable and a clean
// current project with its option files and distribution directory forgotten.
#ifndef VELMORA_TESTS_PROJECT_SUPPORT_HPP
#define VELMORA_TESTS_PROJECT_SUPPORT_HPP

#include "project/options.h"
#include "project/project.h"
#include "util/environment.h"
#include "support/temp_dir.hpp"

using EnvVar = ScopedEnv;

// Forgets every process-wide project state the tests touch.
inline void ResetProjectState() {
    VlProjDelete();
    VlCmdLineClearOptions();
    VlProjResetOptionFiles();
    VlResetDistDir();
}

#endif
