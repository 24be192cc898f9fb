// The example project with the bundled distribution: vlnogui exits 0, leaves
// every file of the example as it was (the example is the engine's own
// output), installs its pages, and a second run over the first run's output
// changes nothing outside the backup directory.
#include "e2e/harness.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Example, TheShopIsAFixedPointOfTheEngine) {
    const std::string source = std::string(VELMORA_SOURCE_DIR) + "/examples/shop";
    const std::string dist = std::string(VELMORA_SOURCE_DIR) + "/dist";
    TempDir root;
    fs::create_directories(root.File("home"));
    fs::copy(source, root.File("shop"), fs::copy_options::recursive);
    const auto original = Snapshot(source);

    const std::vector<std::string> env = {"PATH=" + dist + "/bin:/usr/bin:/bin",
                                          "HOME=" + root.File("home"), "VELMORA=" + dist};
    for (const char *config : {"test.cfg", "release.cfg"}) {
        SCOPED_TRACE(config);
        const std::string project = root.File("shop/shop.pj");
        ProgramRun r = RunProgram(VLNOGUI_PATH, {"-p", project, "-c", root.File("shop/") + config},
                                  env, root.Path());
        EXPECT_EQ(r.status, 0);
        const std::string start = kBanner + "Applying Changes to " + project + " from " +
                                  root.File("shop/") + config +
                                  "\nDone Reading Project.\nDone Writing Project\n";
        EXPECT_EQ(r.out.substr(0, start.size()), start);
        EXPECT_NE(r.out.find("vlinst.sh: pages installed in ../www/shop\n"), std::string::npos);
        EXPECT_EQ(r.out.substr(r.out.size() - 9), "Finished\n");
        EXPECT_EQ(Snapshot(root.File("shop"), {"in_use", "velmoraBack", "shop.pj.lock"}), original);
    }
    // The second run backed up the first run's output, which is the example.
    for (const char *name : {"shop.pj", "shop.c", "catalog.c", "order.c", "catalog.html"})
        EXPECT_EQ(root.Read(std::string("shop/velmoraBackshop/") + name), original.at(name));
    EXPECT_EQ(root.Read("www/shop/catalog.html"), original.at("catalog.html"));
    EXPECT_EQ(root.Read("www/shop/order.html"), original.at("order.html"));
    EXPECT_EQ(root.Read("shop/in_use/order.html.vlm"), original.at("order.html"));
}

} // namespace
