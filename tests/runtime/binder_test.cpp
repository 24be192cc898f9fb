// The placeholder binder and the work calls on SQLite: values checked
// against their type and size, :name placeholders bound as typed parameters,
// one statement per work call, stored procedures, the vendor check, and a
// request's transaction rolled back as a whole.
#include "runtime/database.hpp"
#include "runtime/request_state.hpp"
#include "runtime/settings.hpp"
#include "runtime/VlRnHtml.h"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

namespace {

using vlrun::Fault;

// "ok", or the message of the refusal.
std::string Fits(const char *type, int id, int size, const char *text) {
    std::string value = text ? text : "", why;
    vlrun::TypedValue typed;
    return vlrun::ToTypedValue(type, id, size, text ? &value : nullptr, typed, why) ? "ok" : why;
}

void AddArg(SgeWorkCallData &call, const char *name, const char *type, int size, const char *value) {
    vlrun::ArgumentBind &arg = call.arguments.emplace_back();
    arg.name = name;
    arg.dataType = type;
    arg.size = size;
    arg.hasValue = value != nullptr;
    arg.value = value ? value : "";
    std::string why;
    ASSERT_TRUE(vlrun::ToTypedValue(type, -1, size, value ? &arg.value : nullptr, arg.typed, why));
}

TEST(Binder, ValuesMustFitTheirTypeAndSize) {
    EXPECT_EQ(Fits("int", 4, 4, "-2147483648"), "ok");
    EXPECT_EQ(Fits("int", 4, 4, "2147483648"), "is out of the range of its integer type");
    EXPECT_EQ(Fits("smallint", 5, 2, "32768"), "is out of the range of its integer type");
    EXPECT_EQ(Fits("bigint", -5, 8, "9223372036854775808"), "is out of the range of its integer type");
    for (const char *bad : {"1.5", " 1", "1 ", "+", "0x10", "1e3", "abc"})
        EXPECT_EQ(Fits("INTEGER", 4, 4, bad), "is not an integer") << bad;
    EXPECT_EQ(Fits("decimal(8,2)", 3, 8, "-123456.78"), "ok");
    EXPECT_EQ(Fits("decimal", 3, 8, "1234567.89"), "has more than 8 digits");
    for (const char *bad : {"1.2.3", ".", "1e", "nan", "inf", "1,5"})
        EXPECT_EQ(Fits("numeric", 2, 0, bad), "is not a number") << bad;
    EXPECT_EQ(Fits("float", 6, 0, "1e999"), "is not a number");
    // Text is counted in characters, not bytes.
    EXPECT_EQ(Fits("varchar", 12, 3, "\xC3\xA9\xC3\xA9\xC3\xA9"), "ok");
    EXPECT_EQ(Fits("varchar", 12, 3, "abcd"), "is longer than 3 characters");
    // Without a type name the ODBC number decides.
    EXPECT_EQ(Fits("", 4, 0, "x"), "is not an integer");
    EXPECT_EQ(Fits("", 12, 0, "x"), "ok");
}

TEST(Binder, BindsPlaceholdersAsTypedParameters) {
    sqlite3 *db = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);
    auto row = [&](const char *sql, const SgeWorkCallData &call, Fault &fault) {
        sqlite3_stmt *st = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(db, sql, -1, &st, nullptr), SQLITE_OK);
        fault = vlrun::BindParameters(st, call);
        std::string out;
        if (!fault.status && sqlite3_step(st) == SQLITE_ROW)
            for (int c = 0; c < sqlite3_column_count(st); c++) {
                const unsigned char *v = sqlite3_column_text(st, c);
                out += std::string(v ? reinterpret_cast<const char *>(v) : "NULL") + "|";
            }
        sqlite3_finalize(st);
        return out;
    };
    SgeWorkCallData call;
    call.name = "q";
    AddArg(call, "i", "int", 4, "-7");
    AddArg(call, "n", "decimal", 8, "2.5");
    AddArg(call, "t", "varchar", 20, "' OR 1=1--");
    AddArg(call, "absent", "varchar", 20, nullptr);
    AddArg(call, "empty", "int", 4, "");
    Fault fault;
    EXPECT_EQ(row("select :i, typeof(:i), :n, typeof(:n), :t, typeof(:t), :absent, :empty, :i + 1",
                  call, fault),
              "-7|integer|2.5|real|' OR 1=1--|text|NULL|NULL|-6|");
    EXPECT_EQ(fault.status, 0);

    row("select ?1", call, fault);
    EXPECT_EQ(fault.status, 500);
    EXPECT_EQ(fault.detail, "work call q of ?: parameter ?1 is not a :name placeholder");
    row("select :i, :missing", call, fault);
    EXPECT_EQ(fault.detail, "work call q of ?: placeholder :missing has no argument bind");
    sqlite3_close(db);
}

class WorkCalls : public ::testing::Test {
  protected:
    void SetUp() override {
        vlrun::TheSettings() = vlrun::Settings();
        vlrun::TheSettings().database = dir_.File("shop.db");
        sqlite3 *db = nullptr;
        ASSERT_EQ(sqlite3_open(vlrun::TheSettings().database.c_str(), &db), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(db,
                               "create table t (x integer);"
                               "create table vl_procedures (name text primary key, sql text);"
                               "insert into vl_procedures values ('count', 'select count(*) from t');",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK);
        sqlite3_close(db);
        vlrun::SetCurrentRequest(&request_);
    }
    void TearDown() override { vlrun::SetCurrentRequest(nullptr); }

    Fault Run(const std::string &name, std::vector<std::string> fragments) {
        SgeWorkCallData &call = *request_.calls.emplace_back(std::make_unique<SgeWorkCallData>());
        call.name = name;
        call.activator = "a__Fp";
        call.fragments = std::move(fragments);
        return request_.databases->Run(call);
    }
    std::string Count() {
        Fault fault = Run("count", {});
        EXPECT_EQ(fault.status, 0) << fault.detail;
        return VlGetValue(request_.calls.back().get(), 0, 0);
    }

    TempDir dir_;
    vlrun::RequestState request_;
};

TEST_F(WorkCalls, ARequestIsOneTransaction) {
    EXPECT_EQ(Run("add", {"insert into t", "values (1)"}).status, 0);
    EXPECT_EQ(VlGetAffectedRows(request_.calls.back().get()), 1);
    EXPECT_EQ(Count(), "1");
    Fault fault = Run("bad", {"insert into nowhere values (2)"});
    EXPECT_EQ(fault.status, 500);
    EXPECT_EQ(fault.message, "The request could not be completed.");
    EXPECT_EQ(fault.detail, "work call bad of a__Fp: no such table: nowhere");
    request_.databases->Rollback();
    EXPECT_EQ(Count(), "0");

    EXPECT_EQ(Run("add", {"insert into t values (3)"}).status, 0);
    EXPECT_EQ(request_.databases->Commit().status, 0);
    EXPECT_EQ(Count(), "1");
}

TEST_F(WorkCalls, RefusesWhatIsNotOneStatementOfTheServedVendor) {
    EXPECT_EQ(Run("two", {"select 1; select 2"}).detail,
              "work call two of a__Fp: the SQL holds more than one statement");
    EXPECT_EQ(Run("one", {"select 1; -- and a comment"}).status, 0);
    EXPECT_EQ(Run("nothing", {}).detail,
              "work call nothing of a__Fp: no stored procedure nothing in vl_procedures");
    VlSetDefaultVendor(SGEORACLE);
    Fault fault = Run("one", {"select 1"});
    EXPECT_EQ(fault.status, 500);
    EXPECT_EQ(fault.message,
              "The database vendor ORACLE is not supported by this runtime, which serves SQLITE and "
              "POSTGRES.");
}

} // namespace
