#include "platform/module_path.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "platform/temporary_directory.hpp"
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

TEST(ModulePath, HasNoDetours) {
  const test::TemporaryDirectory directory;
  const std::string& base = directory.path();
  std::filesystem::create_directories(base + "real/lib");
  std::filesystem::create_directory_symlink("real/lib", base + "link");
  directory.write("real/lib/x.so", "");
  const std::string root = std::filesystem::canonical(base).string();
  const std::map<std::string, std::string> cases{
      {base + "real/lib/x.so", base + "real/lib/x.so"},
      {base + "real/./lib/./x.so", base + "real/lib/x.so"},
      {base + "real//lib///x.so", base + "real/lib/x.so"},
      {base + "real/../real/lib/x.so", root + "/real/lib/x.so"},
      {base + "link/x.so", base + "link/x.so"},
      {base + "link/../lib/x.so", root + "/real/lib/x.so"},  // ".." of what the link leads to
      {base + "none/../real/lib/x.so", ""}};
  for (const auto& [loaded, path] : cases) EXPECT_EQ(plain_path(loaded), path) << loaded;
  EXPECT_EQ(plain_path("./x.so"), (std::filesystem::current_path() / "x.so").string());
}

}  // namespace
}  // namespace tessarel::platform
