// Where the library was loaded from.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessarel::platform {

using ModuleHandle = const void*;

/// A handle to the loaded library of that name, null when there is none. The name of this library is "TESSAREL".
ModuleHandle get_module_handle(std::string_view name) noexcept;

/// Writes the full path of the library into `buffer`, blank-padded. The buffer stays blank for a null handle and for
/// a path that does not fit: half a path would name a wrong directory.
void get_module_file_name(ModuleHandle handle, char* buffer, std::size_t size) noexcept;

/// The file that a path leads to, links followed; empty if there is none.
std::string real_path(const std::string& path);

/// The value of an environment variable; empty if there is none.
std::string environment(const char* name);

/// `loaded`, a path as the loader knows it, as an absolute path without "." and "..", since the data are found by
/// counting its directories. Symbolic links are kept where that allows it: the data lie beside the link when the
/// library was loaded through one. Empty when the path leads nowhere.
std::string plain_path(std::string_view loaded);

}  // namespace tessarel::platform
