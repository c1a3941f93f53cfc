#include "platform/module_path.hpp"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "support/text.hpp"

namespace tessarel::platform {
namespace {

std::string file_name_of(std::string_view module, std::size_t size) {
  std::string buffer(size, '?');
  get_module_file_name(get_module_handle(module), buffer.data(), size);
  return std::string(trimmed(buffer));
}

TEST(ModulePath, IsTheFileThatHoldsTheCode) {
  // The tests link the code statically, so the module is the test program itself.
  const std::string file = file_name_of("TESSAREL", 256);
  EXPECT_TRUE(std::filesystem::path(file).is_absolute()) << file;
  EXPECT_TRUE(std::filesystem::equivalent(file, "/proc/self/exe")) << file;
}

TEST(ModulePath, StaysBlankForAnotherModuleAndWhenItDoesNotFit) {
  EXPECT_EQ(get_module_handle("OTHER"), nullptr);
  EXPECT_EQ(file_name_of("OTHER", 256), "");
  EXPECT_EQ(file_name_of("TESSAREL", 4), "");
}

}  // namespace
}  // namespace tessarel::platform
