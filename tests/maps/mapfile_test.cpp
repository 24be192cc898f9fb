// The map file: the writer's exact bytes, the reader's rebuilding of the map,
// its error reports with file and line, long lines, and the project-level
// read (with the .BAK rename) and write.
#include "support/capture.hpp"
#include "support/map_sample.hpp"
#include "support/bind_text.hpp"
#include "maps/mapfile.h"
#include "bindcode/upkeep.h"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

namespace {

class MapFile : public ::testing::Test {
  protected:
    TempDir dir;
    void SetUp() override { SwdResetTheMap(); }
    void TearDown() override { SwdResetTheMap(); }
    std::string Path(const char *name) const { return dir.File(name); }

    // Reads text as a map file: the result, the map and what went to stderr.
    int ReadMap(const std::string &text, SpmMap **map, std::string *err) {
        dir.Write("in.map", text);
        int rc = 0;
        *err = PrintedToStderr([&] { rc = SpmReadMapFile(map, Path("in.map").c_str()); });
        return rc;
    }
    // A read that must fail at this line.
    void ExpectBadLine(const std::string &text, int line) {
        SpmMap *map = reinterpret_cast<SpmMap *>(1);
        std::string err;
        EXPECT_EQ(ReadMap(text, &map, &err), -1) << text;
        EXPECT_EQ(map, nullptr);
        EXPECT_EQ(err, "Error in the map file " + Path("in.map") + " at line " +
                           std::to_string(line) + ".\n")
            << text;
    }
};

TEST_F(MapFile, WriterPutsOutEveryStoredFieldInItsFixedForm) {
    // Read and written back, the sample comes out byte for byte.
    SpmMap *map = SampleMap(dir);
    EXPECT_EQ(SpmWriteMapFile(map, Path("out.map").c_str()), 0);
    EXPECT_EQ(dir.Read("out.map"), sampleText);

    // A bind without a name stops the writing after its empty line; the
    // file function still reports success.
    auto *first = Nth<SpmSPBind>(map->spBinds, 0);
    Set(&first->name, nullptr);
    EXPECT_EQ(SpmWriteMapFile(map, Path("cut.map").c_str()), 0);
    EXPECT_EQ(dir.Read("cut.map"), "*spmap.numberMaps : 2\n*spiface.numInterfaces : 2\n"
                                   "*spiface.interfaceName : Page1\n"
                                   "*spiface.interfaceName : Page2\n\n");
    EXPECT_EQ(PrintedToStderr([&] {
                  EXPECT_EQ(SpmWriteMapFile(map, ""), -1);
                  EXPECT_EQ(SpmWriteMapFile(map, Path("no/such/dir.map").c_str()), -1);
              }),
              "No map file name was given to write.\nGCatb(32,0)");
    SpmDestroyMap(&map);
}

TEST_F(MapFile, ValuesOfSimpleBindKeysStopAtADotOrAColon) {
    SpmMap *map = nullptr;
    std::string err;
    ASSERT_EQ(ReadMap("*spmap.numberMaps : 1\n\n*spid.name : n\n*n.altName : a:b\n"
                      "*n.servername : s.x\n*n.cacheKey :k\n*n.indexKey : \ti\n"
                      "*n.dbname : d.e:f\n*n.options : o.p : q\n",
                      &map, &err),
              0);
    // Only one blank or tab is skipped before a value.
    EXPECT_EQ(
        Stored(Nth<SpmSPBind>(map->spBinds, 0)),
        "\"s\" 0 \"d.e:f\" 0 \"n\" 0 \"a\" 0 \"NO_CACHE\" \"k\" \"\ti\" none 0 [\"o.p : q\",]");
    SpmDestroyMap(&map);
}

TEST_F(MapFile, EveryBadLineFailsTheReadWithFileAndLine) {
    const std::string top = "*spmap.numberMaps : 1\n*spiface.numInterfaces : 1\n";
    const std::string bind =
        top + "\n*spid.name : n\n*n.numCol : 1\n*n.numCall : 1\n*n.numArg : 1\n";
    ExpectBadLine(top + "*spid.name : a\n*spid.name : b\n", 4); // beyond numberMaps
    ExpectBadLine(top + "*spmap.numberMaps : 1\n", 3);          // a second map line
    ExpectBadLine("*spmap.numberOf : 1\n", 1);
    ExpectBadLine(top + "*spiface.interfaceName : A\n*spiface.interfaceName : B\n", 4);
    ExpectBadLine(top + "*spiface.other : A\n", 3);
    ExpectBadLine(top + "*spid.name :\n", 3);
    ExpectBadLine(top + "*spid.nam : x\n", 3);
    ExpectBadLine(top + "*unknown.key : 1\n", 3);
    ExpectBadLine(top + "*nodot\n", 3);
    ExpectBadLine(bind + "*n.id : one\n", 8);
    ExpectBadLine(bind + "*n.id : 99999999999\n", 8);
    ExpectBadLine(bind + "*n.cacheFlag : SOME_CACHE\n", 8);
    ExpectBadLine(bind + "*n.beenApplied : true\n", 8);
    ExpectBadLine(bind + "*n.color : red\n", 8);
    ExpectBadLine(bind + "*n.colBind.order : 1\n", 8); // no column started
    ExpectBadLine(bind + "*n.colBind.columnId : 1\n*n.colBind.columnId : 2\n", 9);
    ExpectBadLine(bind + "*n.colBind.columnId : 1\n*n.colBind.shade : 2\n", 9);
    ExpectBadLine(bind + "*n.callBind.callbackName : F\n*n.callBind.maxRows : many\n", 9);
    // Only the first dot of a name is protected.
    ExpectBadLine(top + "\n*spid.name : x.y.z\n*x.y.z.id : 0\n", 5);
}

TEST_F(MapFile, ReaderEdgeCases) {
    SpmMap *map = nullptr;
    std::string err;
    // Lines without "*" are ignored; fewer binds than declared is fine; a
    // repeated argument initCode replaces the earlier one; the read clears
    // the verified flag; the last character of a name goes even at the end
    // of the file.
    SpmMapVerified();
    ASSERT_EQ(ReadMap("# comment\n*spmap.numberMaps : 5\n*spiface.numInterfaces : 1\nnoise\n"
                      "*spid.name : n\n*n.numArg : 1\n*n.argBind.argId : 7\n"
                      "*n.argBind.initCode : x\n\n*n.argBind.initCode : y\n\n"
                      "*n.argBind.dataSize : 3\n*spiface.interfaceName : Pagex",
                      &map, &err),
              0);
    EXPECT_EQ(SpmIsMapVerified(), 0);
    auto *arg = Nth<SpmArgBind>(Nth<SpmSPBind>(map->spBinds, 0)->argBinds, 0);
    EXPECT_EQ(arg->argId, 7);
    EXPECT_STREQ(arg->initCode, "y");
    EXPECT_EQ(Items(map->interfaces), Strings{"Page"});
    SpmDestroyMap(&map);
    EXPECT_EQ(PrintedToStderr([&] { EXPECT_EQ(SpmReadMapFile(&map, ""), -1); }),
              "No map file name was given to read.\n");
}

TEST_F(MapFile, LongLinesAreReadInPieces) {
    // A single-line value longer than the line limit is cut at the piece; the
    // rest of the line is a piece without "*" and so ignored.
    std::string longOption(5000, 'o');
    // A multi-line value gathers every piece, so it survives whole.
    std::string longFrag(9000, 'f');
    longFrag[4500] = '\n';
    SpmMap *map = nullptr;
    std::string err;
    ASSERT_EQ(ReadMap("*spmap.numberMaps : 1\n\n*spid.name : n\n*n.options : " + longOption +
                          "\n*n.sqlFrags : " + longFrag + "\n\n*n.id : 1\n",
                      &map, &err),
              0);
    auto *b = Nth<SpmSPBind>(map->spBinds, 0);
    EXPECT_EQ(std::string(Item(b->options, 0)), std::string(4095 - 13, 'o'));
    EXPECT_EQ(std::string(Item(b->sqlFrags, 0)), longFrag);
    EXPECT_EQ(b->id, 1);
    SpmDestroyMap(&map);
}

TEST_F(MapFile, OnlyUnappliedBindsGiveHeaderAndEmptyLines) {
    SpmMap *map = SpmNewMap();
    map->spBinds = SutNewList();
    SpmSPBind *b = SpmCreateListsForSpmBind(0, 1, 0);
    Set(&b->name, "x");
    SutAddList(map->spBinds, b);
    SutAddList(map->spBinds, SpmCreateListsForSpmBind(0, 0, 0)); // applied, no callback
    Nth<SpmSPBind>(map->spBinds, 1)->beenApplied = 1;
    ASSERT_EQ(SpmWriteMapFile(map, Path("u.map").c_str()), 0);
    EXPECT_EQ(dir.Read("u.map"), "*spmap.numberMaps : 2\n*spiface.numInterfaces : 0\n\n\n");
    SpmDestroyMap(&map);
}

TEST_F(MapFile, ProjectReadRenamesTheMapAndSetsTheContext) {
    WriteText(Path("my shop's.map"), sampleText);
    SpmAddSPBind(); // the old context goes
    EXPECT_EQ(SpmMapFileExist(Path("my shop's.pj").c_str()), 0);
    EXPECT_EQ(SpmProjectReadMap(Path("my shop's.pj").c_str()), 0);
    SpmMap *map = SpmGetMapContext();
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(SutSizList(map->spBinds), 2);
    EXPECT_FALSE(fs::exists(Path("my shop's.map")));
    EXPECT_EQ(dir.Read("my shop's.map.BAK"), sampleText);

    // A failed read leaves no map at all.
    WriteText(Path("bad.map"), "*spmap.numberMaps : 0\n*spid.name : x\n");
    PrintedToStderr([&] { EXPECT_EQ(SpmProjectReadMap(Path("bad.pj").c_str()), -1); });
    EXPECT_EQ(SpmGetMapContext(), nullptr);
    EXPECT_TRUE(fs::exists(Path("bad.map")));
}

TEST_F(MapFile, ProjectWriteAnswersOneAndNamesTheFileAfterTheProject) {
    EXPECT_EQ(SpmProjectWriteMap(Path("shop.pj").c_str()), -1); // no context
    SpmSetMapContext(SampleMap(dir));
    // No extension in the name: the last dot (of the directory) is replaced.
    fs::create_directory(Path("v1.0"));
    EXPECT_EQ(SpmProjectWriteMap(Path("v1.0/proj").c_str()), 1);
    EXPECT_EQ(dir.Read("v1.map"), sampleText);
    // Short project paths write Untitled.map in the working directory.
    ScopedCwd cwd(dir.Path());
    EXPECT_EQ(SpmProjectWriteMap("a.pj"), 1);
    EXPECT_EQ(dir.Read("Untitled.map"), sampleText);
}

} // namespace
