// The sessions of the process: made, freed, made current on a thread. The library's only process-wide state.
#include "interface/session.hpp"

#include <pthread.h>

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <new>

#include "interface/boundary.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

constexpr Message no_such_session = "TESSAREL error: no such session...";
constexpr Message in_use_elsewhere = "TESSAREL error: session is in use on another thread...";

struct Slot {
  std::unique_ptr<Session> session;
  bool in_use = false;  ///< current on some thread
};

/// All sessions but the first, by number. Numbers are not given twice, so a stale one is recognised.
struct Library {
  platform::FluidDatabase database;
  Session first{database};
  std::mutex mutex;
  std::map<std::int64_t, Slot> slots;
  std::int64_t last_number = 0;
  fluid::PathText data_directory;  ///< of sessions yet to be made
  pthread_key_t thread_end{};
  bool has_key = pthread_key_create(&thread_end, give_back) == 0;

  /// Releases the session of the thread, which ends.
  static void give_back(void* unused);
};

/// Never destroyed: a host may call when the process ends.
Library& library() noexcept {
  alignas(Library) static std::byte storage[sizeof(Library)];
  static Library& instance = *new (storage) Library;
  return instance;
}

/// The session of this thread; null for session 0. A plain pointer, since the library can be loaded by a thread that
/// already runs and its code must not depend on thread-local objects.
constinit thread_local Session* current = nullptr;
constinit thread_local std::int64_t current_number = 0;

void release_current(Library& lib) {
  if (current_number != 0) lib.slots.at(current_number).in_use = false;
  current = nullptr;
  current_number = 0;
}

void Library::give_back(void*) {
  Library& lib = library();
  const std::lock_guard lock(lib.mutex);
  release_current(lib);
}

Message use(std::int64_t number) {
  if (number == current_number) return no_errors;
  Library& lib = library();
  const std::lock_guard lock(lib.mutex);
  if (number == 0) {
    release_current(lib);
    return no_errors;
  }
  const auto found = lib.slots.find(number);
  if (found == lib.slots.end()) return no_such_session;
  if (found->second.in_use) return in_use_elsewhere;
  // Any value but null makes pthread call give_back.
  if (!lib.has_key || pthread_setspecific(lib.thread_end, &lib) != 0)
    return "TESSAREL error: no thread-specific storage left...";
  release_current(lib);
  found->second.in_use = true;
  current = found->second.session.get();
  current_number = number;
  return no_errors;
}

std::int64_t add(Library& lib, std::unique_ptr<Session> session) {
  const std::int64_t number = lib.last_number + 1;
  lib.slots[number].session = std::move(session);
  return lib.last_number = number;
}

Message free_session(std::int64_t number) {
  if (number == 0) return "TESSAREL error: session 0 cannot be freed...";
  Library& lib = library();
  const std::lock_guard lock(lib.mutex);
  const auto found = lib.slots.find(number);
  if (found == lib.slots.end()) return no_such_session;
  if (found->second.in_use) return "TESSAREL error: session is current on a thread and cannot be freed...";
  lib.slots.erase(found);
  return no_errors;
}

Message clone(std::int64_t from, std::int64_t& to) {
  Library& lib = library();
  const std::lock_guard lock(lib.mutex);
  const Session* source = &lib.first;
  if (from != 0) {
    const auto found = lib.slots.find(from);
    if (found == lib.slots.end()) return no_such_session;
    if (found->second.in_use && from != current_number) return in_use_elsewhere;
    source = found->second.session.get();
  }
  to = add(lib, std::make_unique<Session>(*source));
  return no_errors;
}

Message set_data_directory(std::string_view path) {
  const std::string_view directory = trimmed(path);
  if (directory.size() > fluid::PathText::size()) return "TESSAREL error: the path of the data is too long...";
  if (!directory.empty() && !fluid::has_data(directory))
    return "TESSAREL error: no fluids and BIPs.mix in the directory of the data...";
  Library& lib = library();
  const std::lock_guard lock(lib.mutex);
  lib.data_directory = fluid::PathText(directory);
  current_session().sources.directory = lib.data_directory;
  return no_errors;
}

/// Runs `body`, which returns a message, unless an argument is missing.
template <class Body>
void session_call(std::initializer_list<const void*> arguments, TextField err, Body&& body) noexcept {
  guarded(err, [&] { err.assign(any_null(arguments) ? null_argument : body()); });
}

}  // namespace

Session& current_session() noexcept {
  return current != nullptr ? *current : library().first;
}

}  // namespace tessarel::interface

using namespace tessarel;

extern "C" void tessarel_session_new(int64_t* session, char* err, size_t err_len) {
  interface::session_call({session}, {err, err_len}, [&] {
    interface::Library& lib = interface::library();
    auto fresh = std::make_unique<interface::Session>(lib.database);
    const std::lock_guard lock(lib.mutex);
    fresh->sources.directory = lib.data_directory;
    *session = interface::add(lib, std::move(fresh));
    return no_errors;
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_session_new);

extern "C" void tessarel_session_use(const int64_t* session, char* err, size_t err_len) {
  interface::session_call({session}, {err, err_len}, [&] { return interface::use(*session); });
}
TESSAREL_FORTRAN_TWIN(tessarel_session_use);

extern "C" void tessarel_session_free(const int64_t* session, char* err, size_t err_len) {
  interface::session_call({session}, {err, err_len}, [&] { return interface::free_session(*session); });
}
TESSAREL_FORTRAN_TWIN(tessarel_session_free);

extern "C" void tessarel_session_current(int64_t* session) {
  if (session != nullptr) *session = interface::current_number;
}
TESSAREL_FORTRAN_TWIN(tessarel_session_current);

extern "C" void tessarel_session_clone(const int64_t* from, int64_t* to, char* err, size_t err_len) {
  interface::session_call({from, to}, {err, err_len}, [&] { return interface::clone(*from, *to); });
}
TESSAREL_FORTRAN_TWIN(tessarel_session_clone);

extern "C" void tessarel_datadir(const char* path, char* err, size_t path_len, size_t err_len) {
  interface::session_call({path}, {err, err_len},
                          [&] { return interface::set_data_directory(input_text(path, path_len)); });
}
TESSAREL_FORTRAN_TWIN(tessarel_datadir);
