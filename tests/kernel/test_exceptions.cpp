// The guard where commands run: no C++ exception leaves it but the
// interrupt's Abandon; any other becomes a message and a failure.
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

#include "kernel/exceptions.h"
#include "kernel/interrupt.h"
#include "support/capture.h"

namespace {

class Guard : public ::testing::Test {
 protected:
  void SetUp() override { minimal_kernel(); }
};

TEST_F(Guard, ExceptionsBecomeMessagesAndFailures) {
  Capture out;
  EXPECT_EQ(sans_exception([] { return 7; }), 7);
  EXPECT_EQ(out.take(), "");
  EXPECT_EQ(sans_exception([]() -> int { throw std::bad_alloc(); }), -1);
  EXPECT_NE(out.take().find("MALLOC ERROR"), std::string::npos);
  EXPECT_EQ(sans_exception([]() -> int { throw std::length_error("vector::reserve"); }), -1);
  EXPECT_NE(out.take().find("vector::reserve"), std::string::npos);
  EXPECT_EQ(sans_exception([]() -> int { throw 3; }), -1);
  EXPECT_FALSE(out.take().empty());
}

TEST_F(Guard, AbandonGoesBackToTheLinesStart) {
  EXPECT_THROW(sans_exception([]() -> int { throw Abandon{}; }), Abandon);
}

}  // namespace
