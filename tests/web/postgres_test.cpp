// The example shop on PostgreSQL: a private server gets the shop's database
// from shop-postgres.sql, vlnogui regenerates the example for the POSTGRES
// vendor and lighttpd serves it while curl asks for searches, the stored
// function, orders, injection attempts and failures that roll back; and work
// calls of the runtime itself: placeholders beside casts, literals, comments
// and dollar quotes, stored functions with arguments, the transaction.
#include "runtime/database.hpp"
#include "runtime/request_state.hpp"
#include "runtime/settings.hpp"
#include "runtime/VlRnHtml.h"
#include "web/postgres_server.hpp"
#include "web/shop_site.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

class PostgresShop : public ShopSuite {
  protected:
    static void SetUpTestSuite() {
        skipped_ = WebToolsMissing();
        if (skipped_.empty() && PostgresBinDir().empty())
            skipped_ = "the PostgreSQL server is not installed (apt-get install postgresql)";
        if (!skipped_.empty()) return;
        server_ = std::make_unique<PostgresServer>();
        if (!server_->Running()) return;
        setup_ = server_->CreateDatabase("shop", kExample + "/shop-postgres.sql");
        site_ = std::make_unique<ShopSite>([](const WebServer &) {
            return std::vector<std::string>{
                "Test.Database Vendor : POSTGRES", "Test.Database Server : " + server_->SocketDir(),
                "Test.Database Name : shop",
                std::string("Test.Database User Name : ") + PostgresServer::kRole};
        });
    }
    static void TearDownTestSuite() {
        StopSite();
        server_.reset();
    }
    void SetUp() override {
        if (skipped_.empty()) {
            ASSERT_TRUE(server_->Running()) << server_->Log();
            ASSERT_EQ(setup_, "");
        }
        ShopSuite::SetUp();
    }

    static std::string Sql(const std::string &query) {
        return PostgresServer::Query(server_->Connect("shop").get(), query);
    }
    static HttpAnswer Order(const std::string &fields) {
        return site_->Ask("VlFormName=order__Forder_html&" + fields);
    }

    static inline std::unique_ptr<PostgresServer> server_;
    static inline std::string setup_;
};

TEST_F(PostgresShop, SearchesAndTheStoredFunctionAnswerAsOnSqlite) {
    ExpectSearchesOfTheCatalog();
    // A work call without SQL calls the function of its name: specials().
    EXPECT_EQ(Books(site_->Ask("", "/cgi-bin/shop.cgi?FNC=specials__Acatalog_html")), kSpecials);
    EXPECT_EQ(Sql("select count(*) from books"), "6\n");
}

TEST_F(PostgresShop, OrdersAreStoredAsSent) {
    HttpAnswer placed = Order("customer=Ann&title=Dune&quantity=2");
    EXPECT_EQ(placed.status, 200);
    EXPECT_NE(placed.body.find("</FORM>\nThank you, Ann. Ordered: 2 x Dune\n<p>"), std::string::npos)
        << placed.body;

    // Shown escaped as on SQLite (the page filler is the same for both).
    EXPECT_EQ(Order("customer=%3Cscript%3Ealert(1)%3C/script%3E+Z%C3%B6e&title=%27+OR+1%3D1--"
                    "&quantity=3").status, 200);
    EXPECT_EQ(Sql("select customer, title, quantity from orders order by id desc limit 2"),
              "<script>alert(1)</script> Zöe|' OR 1=1--|3\nAnn|Dune|2\n");
}

TEST_F(PostgresShop, FailuresRollTheRequestBack) {
    const std::string before = Sql("select count(*) from orders");
    HttpAnswer refused = Order("customer=Ann&title=Dune&quantity=0"); // the table's check
    EXPECT_EQ(refused.status, 500);
    EXPECT_NE(refused.body.find("<p>The request could not be completed.</p>"), std::string::npos);

    // A lock held longer than 5 seconds answers 503.
    PgConnection holder = server_->Connect("shop");
    EXPECT_EQ(PostgresServer::Query(holder.get(), "BEGIN; LOCK TABLE orders IN SHARE MODE"), "");
    HttpAnswer busy = Order("customer=Ann&title=Dune&quantity=1");
    EXPECT_EQ(busy.status, 503);
    EXPECT_NE(busy.body.find("<p>The database is busy; try again in a moment.</p>"), std::string::npos);
    EXPECT_EQ(PostgresServer::Query(holder.get(), "ROLLBACK"), "");
    EXPECT_EQ(Sql("select count(*) from orders"), before);
    EXPECT_NE(site_->Server().ErrorLog().find(
                  "vlrun: 503: work call place_order of order__Forder_html: ERROR:  canceling "
                  "statement due to lock timeout"),
              std::string::npos);
}

// Work calls made in this process, as an activator makes them.
class PostgresWorkCalls : public PostgresShop {
  protected:
    void SetUp() override {
        PostgresShop::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        VlInitHeaders();
        VlSetDefaultVendor(SGEPOSTGRES);
        VlSetDefaults(server_->SocketDir().c_str(), "shop");
        VlSetDefaultUser(PostgresServer::kRole);
        request_ = std::make_unique<vlrun::RequestState>();
        vlrun::SetCurrentRequest(request_.get());
    }
    void TearDown() override {
        vlrun::SetCurrentRequest(nullptr);
        request_.reset();
        VlInitHeaders();
    }
    // The rows of a work call that ran as "a|b\n" lines, or its fault.
    std::string Rows(pSgeWorkCallData call) {
        if (DoWorkProc(call, PROCESSBRSREQUEST_DSQL) != 0) {
            std::string detail = request_->fault.detail;
            request_ = std::make_unique<vlrun::RequestState>(); // a fresh request after a failure
            vlrun::SetCurrentRequest(request_.get());
            return "failed: " + detail;
        }
        std::string out;
        for (int r = 0; r < VlGetRowCount(call); r++) {
            for (int c = 0; c < VlGetColumnCount(call); c++)
                out += std::string(c ? "|" : "") + VlGetValue(call, r, c);
            out += "\n";
        }
        return out;
    }
    pSgeWorkCallData Call(const char *name) {
        return getSgeWorkCallData(const_cast<char *>("test__Fwork_html"), 0, "ignored", "ignored",
                                  name, NO_WP);
    }

    std::unique_ptr<vlrun::RequestState> request_;
};

TEST_F(PostgresWorkCalls, PlaceholdersStandBesideCastsLiteralsCommentsAndDollarQuotes) {
    pSgeWorkCallData mixed = Call("mixed");
    SgeVaSetFrags(mixed, "select :n::int * 2 as doubled, ':n' as quoted, $$:n$$ as dollar,",
                  "/* :n */ :t as t, :t::text || E'\\':n' as e, :absent::int is null as absent",
                  "-- :n is not read here", VULL);
    SgeSetArgBnd2(mixed, 12, 10, "n", "varchar", "21");
    SgeSetArgBnd2(mixed, 12, 20, "t", "varchar", "it's; --");
    SgeSetArgBnd2(mixed, 4, 4, "absent", "int", nullptr);
    EXPECT_EQ(Rows(mixed), "42|:n|:n|it's; --|it's; --':n|t\n");

    pSgeWorkCallData missing = Call("missing");
    SgeVaSetFrags(missing, "select :nothing", VULL);
    EXPECT_EQ(Rows(missing), "failed: work call missing of test__Fwork_html: placeholder :nothing "
                             "has no argument bind");
    pSgeWorkCallData positional = Call("positional");
    SgeVaSetFrags(positional, "select $1", VULL);
    EXPECT_EQ(Rows(positional), "failed: work call positional of test__Fwork_html: parameter $1 is "
                                "not a :name placeholder");
    pSgeWorkCallData two = Call("two");
    SgeVaSetFrags(two, "select 1; select 2", VULL);
    EXPECT_EQ(Rows(two), "failed: work call two of test__Fwork_html: ERROR:  cannot insert multiple "
                         "commands into a prepared statement");
}

TEST_F(PostgresWorkCalls, StoredFunctionsTakeTheArgumentsInOrder) {
    EXPECT_EQ(Sql("create or replace function books_between(low integer, high numeric, "
                  "pattern text) returns table (title text) language sql stable as $$ "
                  "select title from books where price between low and high and title like pattern "
                  "order by title $$"),
              "");
    pSgeWorkCallData between = Call("books_between");
    SgeSetArgBnd2(between, 4, 4, "low", "int", "8");
    SgeSetArgBnd2(between, 3, 8, "high", "decimal", "12.00");
    SgeSetArgBnd2(between, 12, 20, "pattern", "varchar", "%e%");
    EXPECT_EQ(Rows(between), "Dune\nMiddlemarch\nThe Odyssey\n");

    pSgeWorkCallData hostile = Call("books_between(1,2,'x'); drop table books; --");
    EXPECT_EQ(Rows(hostile), "failed: work call books_between(1,2,'x'); drop table books; -- of "
                             "test__Fwork_html: books_between(1,2,'x'); drop table books; -- is not "
                             "a function name");
    pSgeWorkCallData absent = Call("no_such_function");
    EXPECT_TRUE(Rows(absent).starts_with("failed: work call no_such_function of test__Fwork_html: "
                                         "ERROR:  function no_such_function() does not exist"));
}

TEST_F(PostgresWorkCalls, ARequestIsOneTransactionPerDatabase) {
    const std::string before = Sql("select count(*) from orders");
    pSgeWorkCallData add = Call("add");
    SgeVaSetFrags(add, "insert into orders (customer, title, quantity) values ('T', 'Emma', 1)", VULL);
    EXPECT_EQ(Rows(add), "");
    EXPECT_EQ(VlGetAffectedRows(add), 1);
    EXPECT_EQ(Sql("select count(*) from orders"), before); // not committed yet
    request_->databases->Rollback();
    EXPECT_EQ(Sql("select count(*) from orders"), before);

    add = Call("add");
    SgeVaSetFrags(add, "insert into orders (customer, title, quantity) values ('T', 'Emma', 1)", VULL);
    EXPECT_EQ(Rows(add), "");
    EXPECT_EQ(request_->databases->Commit().status, 0);
    EXPECT_EQ(Sql("select count(*) from orders"), std::to_string(std::stoi(before) + 1) + "\n");

    VlSetDefaults(server_->SocketDir().c_str(), "nowhere");
    pSgeWorkCallData lost = Call("lost");
    SgeVaSetFrags(lost, "select 1", VULL);
    const std::string failed = Rows(lost);
    EXPECT_TRUE(failed.starts_with("failed: database nowhere on " + server_->SocketDir() + ": "))
        << failed;
    EXPECT_TRUE(failed.ends_with("FATAL:  database \"nowhere\" does not exist")) << failed;
}

} // namespace
