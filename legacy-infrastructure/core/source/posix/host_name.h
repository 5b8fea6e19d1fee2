// The way of a library name to the host: drives replaced, separators turned, letter case found.
#pragma once

#include "common/path_access.h"
#include "posix/name_buffer.h"

#include <orvix/core/path.h>

#include <cerrno>
#include <string>
#include <string_view>

namespace orvix::core {

// A name as the host's system calls take it.
struct HostName {
    NameBuffer text;

    // So many bytes at the front are the root of a drive, which is taken as it is spelled.
    std::size_t root_bytes = 0;

    // The directory of the last part was looked through on the way, and its listing was good at that moment.
    bool directory_listed = false;
};

// Translates a name. False with errno ENOENT if it can stand for nothing on this host: the empty name, a network name,
// a drive that stands for nothing, a name with a zero byte.
bool translate(const Name& name, HostName* host);

// Whether the whole name is known to be missing, which saves a look.
enum class Missing { maybe, surely };

// Replaces each missing component by the one entry of its directory that matches it ignoring ASCII letter case. What
// has no match, or several, stays as it is together with all behind it. Leaves errno alone.
// Returns true if the text changed.
bool find_spelling(HostName* host, Missing missing);

// Adds a name that was just created to the listing that find_spelling looked at. Leaves errno alone.
void note_created(const HostName& host);

// Takes up again a call that a signal interrupted.
template <class Call>
int uninterrupted(Call call) {
    int result;
    do {
        result = call();
    } while (result == -1 && errno == EINTR);
    return result;
}

// Makes a system call, which gives -1 on failure, on an existing name: first as it is spelled, and where that is
// missing under the spelling found in its directories.
template <class Call>
int call_on_existing(const Name& name, Call call) {
    HostName host;
    if (!translate(name, &host)) return -1;
    const auto attempt = [&] { return uninterrupted([&] { return call(host.text.c_str()); }); };
    const int result = attempt();
    if (result != -1 || errno != ENOENT || !name.ignores_case()) return result;
    return find_spelling(&host, Missing::surely) ? attempt() : result;
}

// Makes a system call that creates the name. Nothing is created beside an entry that differs in letter case alone.
template <class Call>
int call_to_create(HostName* host, bool ignores_case, Missing missing, Call call) {
    if (ignores_case) find_spelling(host, missing);
    const int result = uninterrupted([&] { return call(host->text.c_str()); });
    if (result != -1 && host->directory_listed) note_created(*host);
    return result;
}

template <class Call>
int call_to_create(const Name& name, Call call) {
    HostName host;
    return translate(name, &host) ? call_to_create(&host, name.ignores_case(), Missing::maybe, call) : -1;
}

}  // namespace orvix::core
