#include "platform/module_path.hpp"

#include <dlfcn.h>
#include <link.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "support/text.hpp"

namespace tessarel::platform {
namespace {

const char own_module = 0;  // an address inside this library, whatever file its code was linked into

std::string find_own_path() {
  Dl_info info{};
  void* extra = nullptr;
  if (dladdr1(&own_module, &info, &extra, RTLD_DL_LINKMAP) == 0 || extra == nullptr) return {};
  const char* loaded = static_cast<const link_map*>(extra)->l_name;
  if (loaded != nullptr && *loaded != '\0') return plain_path(loaded);
  // The loader has no name for the main program, into which the code may be linked statically.
  std::error_code failure;
  return std::filesystem::read_symlink("/proc/self/exe", failure).string();
}

// Found at load time, before the host can change the working directory. Never destroyed: a host may call when the
// process ends.
const std::string& own_path = *new std::string(find_own_path());

}  // namespace

std::string plain_path(std::string_view loaded) {
  std::error_code failure;
  std::filesystem::path path;
  bool climbs = false;
  for (const auto& part : std::filesystem::absolute(std::filesystem::path(loaded), failure)) {
    climbs = climbs || part == "..";
    if (part != ".") path /= part;
  }
  // What ".." leads to depends on the links in front of it, so here the directory is resolved.
  if (climbs) path = std::filesystem::canonical(path.parent_path(), failure) / path.filename();
  return failure ? std::string() : path.string();
}

ModuleHandle get_module_handle(std::string_view name) noexcept {
  return same_text(name, "TESSAREL") ? &own_module : nullptr;
}

void get_module_file_name(ModuleHandle handle, char* buffer, std::size_t size) noexcept {
  const bool known = handle == &own_module && own_path.size() <= size;
  assign_padded(buffer, size, known ? std::string_view(own_path) : std::string_view{});
}

std::string real_path(const std::string& path) {
  std::error_code failure;
  const std::filesystem::path real = std::filesystem::canonical(path, failure);
  return failure ? std::string() : real.string();
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

}  // namespace tessarel::platform
