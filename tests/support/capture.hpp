// What a piece of code prints on standard output or standard error (the
// descriptors themselves are redirected, so child processes are caught too).
#ifndef VELMORA_TESTS_SUPPORT_CAPTURE_HPP
#define VELMORA_TESTS_SUPPORT_CAPTURE_HPP

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

template <typename Fn> std::string Printed(Fn fn) {
    fflush(stdout);
    testing::internal::CaptureStdout();
    fn();
    fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

template <typename Fn> std::string PrintedToStderr(Fn fn) {
    testing::internal::CaptureStderr();
    fn();
    fflush(stderr);
    return testing::internal::GetCapturedStderr();
}

#endif
