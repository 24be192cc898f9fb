// Kept for the test files outside this folder that still include it.
#include "support/temp_dir.hpp"
