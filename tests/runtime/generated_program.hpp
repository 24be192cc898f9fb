// Helpers for tests that build a program from generated code: wrapping
// activator bodies into a module of the module file format, and compiling and
// linking C sources the way a generated makefile does (the staged
// distribution's VlRnHtml.h, linked by the C compiler with -lvlrun alone).
#ifndef VELMORA_TESTS_RUNTIME_GENERATED_PROGRAM_HPP
#define VELMORA_TESTS_RUNTIME_GENERATED_PROGRAM_HPP

#include "support/c_values.hpp"
#include "support/run_program.hpp"
#include "velmora.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

inline const std::string kStage = VELMORA_STAGE_DIR;

// A module of the module file format for page, with the activators (name,
// body) registered as form activators ("<name>__F<module>"), the user's
// includes and further registration lines.
inline std::string ModuleText(const std::string &page,
                              const std::vector<std::pair<std::string, std::string>> &activators,
                              const std::string &includes = "",
                              const std::string &registrations = "") {
    std::string module = page;
    for (char &c : module)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    std::string text = "/* Velmora Module File V1.0B */\n/* Velmora Start Of Tool Includes */\n"
                       "#include \"VlRnHtml.h\"\n/* Velmora Start Of user Includes */\n" +
                       includes + "static char _Vl_HTML_Filename[] = \"" + page + "\";\n";
    std::string registration = "void R_" + module + "()\n{\n";
    for (const auto &[name, body] : activators) {
        text += "/*Velmora Start of Function */\nstatic void F" + name +
                " ()\n/* start of initial code */\n{\n/* start of func Code */\n" + body +
                "/* end of func code */\n/* start of final code */\n}/* end of final code */\n";
        registration += "\tVlRegisterHtmlActivator(\"" + name + "__F" + module + "\",F" + name + ");\n";
    }
    return text + registration + registrations + "\n}/* Velmora End of Module */\n";
}

inline ProgramRun Shell(const std::string &command, const std::string &dir) {
    return RunProgram("/bin/sh", {"-c", command}, {"PATH=/usr/bin:/bin"}, dir);
}

// Compiles each C source of dir (with extra compiler options, by another
// compiler if one is given) and links them into program; what the compiler
// or linker said when one failed.
inline std::string BuildProgram(const std::string &dir, const std::vector<std::string> &sources,
                                const std::string &program, const std::string &options = "",
                                const std::string &compiler = VELMORA_C_COMPILER) {
    std::string objects;
    for (const std::string &source : sources) {
        const std::string object = source.substr(0, source.rfind('.')) + ".o";
        ProgramRun run = Shell(compiler + " " + options + " " + VELMORA_C_FLAGS + " -I" + kStage +
                                   "/include -c " + source + " -o " + object,
                               dir);
        if (run.status != 0) return source + ":\n" + run.err;
        objects += " " + object;
    }
    ProgramRun link = Shell(std::string(VELMORA_C_COMPILER) + " " + VELMORA_LINK_FLAGS + " -o " +
                                program + objects + " -L" + kStage + "/lib -lvlrun",
                            dir);
    return link.status == 0 ? std::string() : "linking " + program + ":\n" + link.err;
}

#endif
