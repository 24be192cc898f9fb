// Running a program for its output, as READ_EXEC work calls do: started
// directly (no shell reads its arguments), with nothing on its standard
// input, its standard error left to the web server's log, within a time
// limit and an output limit; the program and whatever it started are
// killed when it breaks either, and when it ends.
#ifndef VELMORA_RUNTIME_PROGRAM_OUTPUT_HPP
#define VELMORA_RUNTIME_PROGRAM_OUTPUT_HPP

#include <cstddef>
#include <string>
#include <vector>

namespace vlrun {

struct ProgramLimits {
    int seconds = 10;
    std::size_t outputBytes = std::size_t(16) << 20;
};

// Runs argv[0] (a path) with the arguments argv; true with its standard
// output when it ended with status 0, else false with the reason ("cannot
// be run: <error>", "ended with status 3", "was killed by signal 9", "ran
// past its time limit of 10 s", "wrote more than ... bytes").
bool ProgramOutput(const std::vector<std::string> &argv, const ProgramLimits &limits,
                   std::string &output, std::string &why);

} // namespace vlrun

#endif
