// The keywords of a PostgreSQL connection: the server split into host and
// port only where that is what it says, settings passed as single values
// (never read as a connection string), and the session settings.
#include "runtime/postgres.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Keywords(const std::string &server, const std::string &user = "",
                     const std::string &password = "") {
    std::string out;
    for (const auto &[name, value] : vlrun::ConnectionKeywords(server, "shop", user, password))
        out += name + "=" + value + "\n";
    return out;
}

TEST(ConnectionKeywords, ServerUserAndPasswordAreSingleValues) {
    const std::string session = "client_encoding=UTF8\nconnect_timeout=10\napplication_name=vlrun\n"
                                "options=-c standard_conforming_strings=on -c lock_timeout=5000\n";
    EXPECT_EQ(Keywords("db.example.com:5433", "shop", "s3cret"),
              "host=db.example.com\nport=5433\ndbname=shop\nuser=shop\npassword=s3cret\n" + session);
    EXPECT_EQ(Keywords("/var/run/postgresql"), "host=/var/run/postgresql\ndbname=shop\n" + session);
    EXPECT_EQ(Keywords(""), "dbname=shop\n" + session);
    for (const char *whole : {"::1", "fe80::1:5432", "host:", ":5432", "h:54x", "h dbname=x port=1"})
        EXPECT_EQ(Keywords(whole), std::string("host=") + whole + "\ndbname=shop\n" + session) << whole;
}

} // namespace
