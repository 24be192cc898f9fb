// The file objects as an application uses them: the engine's generator
// writes activators whose work calls are READ_FILE, READ_EXEC,
// EXEC_FUNCTION and NULL_EXEC requests, a program built from them with
// -lvlrun answers CGI requests, and each answer page shows the rows.
#include "runtime/api.hpp"
#include "runtime/generated_program.hpp"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

struct Argument {
    const char *name, *initCode;
};

// The generated code of one request on page files.html, site rows.
std::string RequestCode(const char *name, int kind, std::initializer_list<const char *> options,
                        std::initializer_list<const char *> columns,
                        std::initializer_list<Argument> arguments) {
    SpmSPBind *bind = SpmNewSPBind();
    Set(&bind->name, name);
    Set(&bind->altName, "bind1");
    bind->id = kind;
    bind->options = MakeList(options);
    SpmCallbackBind *call = SpmAddCallbackBindToSP(bind);
    call->maxRows = 0;
    for (const char *column : columns) {
        SpmColBind *col = SpmAddColBindToSP(bind);
        Set(&col->interface, "files.html");
        Set(&col->swidget, "rows");
        Set(&col->dataType, "varchar");
        Set(&col->columnName, column);
    }
    for (const Argument &argument : arguments) {
        SpmArgBind *arg = SpmAddArgBindToSP(bind);
        Set(&arg->argName, argument.name);
        Set(&arg->dataType, "varchar");
        arg->dataSize = 60;
        Set(&arg->initCode, argument.initCode);
    }
    char *code = getCallbackCode(bind, call, 1);
    std::string text = code ? code : "";
    std::free(code);
    SpmDestroySPBind(&bind);
    return text;
}

const char kMain[] = R"(#include "VlRnHtml.h"
#include <stdio.h>
#include <string.h>

extern void R_files_html(void);

/* EXEC_FUNCTION "shout": the word with its ASCII letters in upper case and
 * its length in bytes, one row; words of 64 bytes or more fail. */
static int shout(pSgeWorkCallData call)
{
	const char *word = VlGetArgValue(call, "word");
	char upper[64], length[16];
	size_t n = word ? strlen(word) : 0;
	if (n >= sizeof upper) return 7;
	for (size_t i = 0; i <= n; i++)
		upper[i] = (char)(word[i] >= 'a' && word[i] <= 'z' ? word[i] - 32 : word[i]);
	snprintf(length, sizeof length, "%zu", n);
	const char *row[] = {upper, length};
	return VlAddRow(call, 2, row);
}

int main(int argc, char **argv)
{
	R_files_html();
	VlInitHeaders();
	VlSetStartupHtml("files.html");
	VlRegisterFunction("shout", shout);
	return VlProcessRequest(argc, argv);
}
)";

class FileObjectProgram : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        dir_ = std::make_unique<TempDir>();
        const std::vector<std::pair<std::string, std::string>> activators = {
            {"flat", RequestCode("catalog.txt", READ_FILE, {"Delimiter : ;"}, {"title", "price"}, {})},
            {"fixed", RequestCode("fixed.txt", READ_FILE, {"Column Widths : 4,3", "Record Delimiter : |"},
                                  {"name", "rest"}, {})},
            {"exec", RequestCode("lines.sh", READ_EXEC, {"Argument : first one", "Delimiter : ="},
                                 {"line", "value"},
                                 {{"who", "VlGetInputValue(\"who\")"},
                                  {"hostile", "\"x=$(touch canary) `touch canary`; touch canary\""}})},
            {"slow", RequestCode("/bin/sleep", READ_EXEC, {"Argument : 30", "Time Limit : 1"}, {"x"}, {})},
            {"fails", RequestCode("/bin/false", READ_EXEC, {}, {"x"}, {})},
            {"limitless", RequestCode("/bin/true", READ_EXEC, {"Time Limit : 99999"}, {"x"}, {})},
            {"missing", RequestCode("no-such-program", READ_EXEC, {}, {"x"}, {})},
            {"function", RequestCode("shout", EXEC_FUNCTION, {}, {"upper", "length"},
                                     {{"word", "VlGetInputValue(\"word\")"}})},
            {"nothing", RequestCode("nothing", NULL_EXEC, {}, {"x"}, {})},
        };
        dir_->Write("files.c", ModuleText("files.html", activators));
        dir_->Write("main.c", kMain);
        built_ = BuildProgram(dir_->Path(), {"main.c", "files.c"}, "files.cgi");
        dir_->Write("files.html", "<html><body>\n##Vl_rows##\n</body></html>\n");
        dir_->Write("catalog.txt", "Dune;9.50\r\nZo\xC3\xAB;7.25\nlast");
        dir_->Write("fixed.txt", "Zo\xC3\xAB 12x|Dune 9");
        dir_->Write("lines.sh", "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done\n");
        fs::permissions(dir_->File("lines.sh"), fs::perms::owner_all);
    }
    static void TearDownTestSuite() { dir_.reset(); }
    void SetUp() override { ASSERT_EQ(built_, ""); }

    // The body of the answer to the form activator name, or the status line
    // and standard error of a failed one.
    static std::string Answer(const std::string &name, const std::string &fields = "") {
        ProgramRun run = RunProgram(
            dir_->File("files.cgi"), {},
            {"REQUEST_METHOD=GET", "QUERY_STRING=VlFormName=" + name + "__Ffiles_html" + fields},
            dir_->Path());
        if (run.out.starts_with("Status: 200 OK\r\n")) return run.out.substr(run.out.find("\r\n\r\n") + 4);
        return run.out.substr(0, run.out.find("\r\n")) + "\n" + run.err;
    }
    static std::string Page(const std::string &table) {
        return "<html><body>\n" + table + "\n</body></html>\n";
    }

    static inline std::unique_ptr<TempDir> dir_;
    static inline std::string built_;
};

TEST_F(FileObjectProgram, FlatFilesAreCutByTheRequestOptions) {
    EXPECT_EQ(Answer("flat"), Page("<table class=\"vl-rows\">\n<tr><th>title</th><th>price</th></tr>\n"
                                   "<tr><td>Dune</td><td>9.50</td></tr>\n"
                                   "<tr><td>Zo\xC3\xAB</td><td>7.25</td></tr>\n"
                                   "<tr><td>last</td><td></td></tr>\n</table>\n"));
    // Widths count characters, not bytes; the last column takes the rest.
    EXPECT_EQ(Answer("fixed"), Page("<table class=\"vl-rows\">\n<tr><th>name</th><th>rest</th></tr>\n"
                                    "<tr><td>Zo\xC3\xAB </td><td>12x</td></tr>\n"
                                    "<tr><td>Dune</td><td> 9</td></tr>\n</table>\n"));
}

TEST_F(FileObjectProgram, ProgramsRunWithoutAShellWithinTheirTimeLimit) {
    EXPECT_EQ(Answer("exec", "&who=%3Cb%3E%27%22+%24HOME"),
              Page("<table class=\"vl-rows\">\n<tr><th>line</th><th>value</th></tr>\n"
                   "<tr><td>first one</td><td></td></tr>\n"
                   "<tr><td>&lt;b&gt;&#39;&quot; $HOME</td><td></td></tr>\n"
                   "<tr><td>x</td><td>$(touch canary) `touch canary`; touch canary</td></tr>\n"
                   "</table>\n"));
    EXPECT_FALSE(fs::exists(dir_->File("canary")));

    const std::string failed = "Status: 500 Internal Server Error\nvlrun: 500: work call ";
    EXPECT_EQ(Answer("slow"),
              failed + "/bin/sleep of slow__Ffiles_html: /bin/sleep ran past its time limit of 1 s\n");
    EXPECT_EQ(Answer("fails"), failed + "/bin/false of fails__Ffiles_html: /bin/false ended with status 1\n");
    EXPECT_EQ(Answer("limitless"), failed + "/bin/true of limitless__Ffiles_html: the Time Limit 99999 "
                                            "is not a number of seconds from 1 to 3600\n");
    EXPECT_EQ(Answer("missing"), failed + "no-such-program of missing__Ffiles_html: " +
                                     dir_->File("no-such-program") +
                                     " cannot be run: No such file or directory\n");
}

TEST_F(FileObjectProgram, RegisteredFunctionsAndNullRequests) {
    EXPECT_EQ(Answer("function", "&word=Zo%C3%AB%3C"),
              Page("<table class=\"vl-rows\">\n<tr><th>upper</th><th>length</th></tr>\n"
                   "<tr><td>ZO\xC3\xAB&lt;</td><td>5</td></tr>\n</table>\n"));
    std::string word;
    for (int i = 0; i < 32; i++)
        word += "%C3%AB"; // 32 characters, 64 bytes
    EXPECT_EQ(Answer("function", "&word=" + word),
              "Status: 500 Internal Server Error\nvlrun: 500: work call shout of "
              "function__Ffiles_html: shout returned 7\n");
    EXPECT_EQ(Answer("function", "&word=" + std::string(61, 'x')),
              "Status: 400 Bad Request\nvlrun: 400: work call shout of function__Ffiles_html: "
              "argument word is longer than 60 characters\n");
    // NULL_EXEC runs nothing and binds no rows: the site is an empty table.
    EXPECT_EQ(Answer("nothing"), Page("<table class=\"vl-rows\">\n<tr><th>x</th></tr>\n</table>\n"));
}

} // namespace
