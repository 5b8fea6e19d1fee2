/// @file
/// The environment: named text settings in four levels of `.cfg` files, references inside values, and saving.
///
/// An open environment, an `eeEnv`, holds one table for each level, and a nearer level hides a farther one: the working
/// directory before the user, the user before the site, the site before the installation. The first environment,
/// "hxorvix", is the master: the `_ee` calls work on it, and references that no other environment knows are looked up
/// there. Files are read when an environment is opened; lookups touch none. docs/configuration-files.md tells the
/// format of the files and where they lie.
///
/// Names of settings: ASCII letter case plays no part, and only the first 63 bytes count.
///
/// Nothing here is synchronised: environments, the chain of open ones, and the walks over path lists belong to one
/// thread at a time. No call sets `GuiErrno`.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>
#include <cstdint>

/// A level. The numbers are part of the interface. Any other number acts as `ENVLOC_ANY` in lookups and when a setting
/// is stored, and loads nothing in `gui_env_open`.
enum EnvlocE : std::int32_t {
    ENVLOC_ANY = 0,     ///< all levels, nearest first; new settings go to the working directory's level
    ENVLOC_CWD = 1,     ///< the file in the current working directory
    ENVLOC_USER = 2,    ///< the file under the user's home directory
    ENVLOC_CUSTOM = 3,  ///< the site's file
    ENVLOC_SYSTEM = 4,  ///< the installation's file, with its add-on files
    ENVLOC_FILE = 5,    ///< a file named in full, held in the working directory's level; otherwise as `ENVLOC_ANY`
};

/// How an entry stands against its file.
enum EnvModE : std::int32_t {
    ENVMOD_CLEAN = 0,     ///< as read from the level's own file, or saved
    ENVMOD_CHANGED = 1,   ///< set by the program, or read twice; to be written
    ENVMOD_REMOVED = 2,   ///< removed by the program: hidden from reads, kept for the save
    ENVMOD_INCLUDED = 3,  ///< read from an included file: stays so when changed, and is never written
};

/// One setting.
struct EnvEntry {
    char key[64];  ///< name in upper case, ended by a zero byte; empty in a free slot
    char* value;   ///< text of the setting, owned by the entry; null after a put without a value
    void* aux;     ///< the user's pointer, set by callers that write it here; never freed
    EnvModE mod;   ///< state against the file
};

/// The library's private search aid of a table.
struct EnvIndex;

/// One level. Callers may look at it and set `EnvEntry::aux`; everything else is changed through the calls below.
///
/// The first `used` slots are taken, in the order in which their settings came; `capacity` is a multiple of 32.
struct EnvTable {
    char path[512];         ///< file that the level was read from or will be written to; empty if none was named
    EnvEntry* entries;      ///< the slots; null if there are none
    std::int32_t capacity;  ///< slots of the table
    std::int32_t used;      ///< slots taken; a removed entry keeps its slot
    EnvIndex* index;        ///< private; null if there are no slots
};

/// An open environment.
struct eeEnv {
    EnvTable system;  ///< level 4, `ENVLOC_SYSTEM`
    EnvTable custom;  ///< level 3, `ENVLOC_CUSTOM`
    EnvTable user;    ///< level 2, `ENVLOC_USER`
    EnvTable cwd;     ///< level 1, `ENVLOC_CWD`
    eeEnv* next;      ///< the environment opened next; null at the end of the chain
};

/// @name Opening and closing
/// @{

/// Brings the master environment up: reads the files of "hxorvix" at all levels. The first call in a process also
/// reads `QDS_CUSTOM_DIR`, once and for all (1023 bytes of it count). The `_ee` calls and `gui_env_open` call this by
/// themselves.
///
/// @return true if the master exists, also if it did before; false without memory
ORVIX_GSL_API bool gui_env_init(void);

/// Opens an environment of its own beside the master and reads its files. Files that are missing or cannot be read are
/// no failure: their levels stay empty.
///
/// Included files may nest 200 deep, and one call reads at most 10,000 of them and starts none after 1 GiB of included
/// text; includes beyond that are skipped in silence. References that are expanded while reading cost together no more
/// than one call of `gui_env_expand_str` may; beyond that they are not expanded, and includes with references skipped.
///
/// @param name  base name of the `.cfg` files ("demo" for `demo.cfg`), or the whole file name for `ENVLOC_FILE`. A
///              level whose file name would be longer than 511 bytes has no file.
/// @param loc   `ENVLOC_ANY` reads the levels 4, 3, 2 and 1; any other level is read alone
/// @return the environment, to be given back with `gui_env_close`; null for a null or empty name or without memory
ORVIX_GSL_API eeEnv* gui_env_open(const char* name, EnvlocE loc);

/// Saves an environment, if asked, and frees it with all in it, in the order of levels 4, 3, 2, 1. The two directories
/// below `HOME` that hold the user's file are made if need be. A level that cannot be saved does not keep the others
/// from being saved, but its changes are lost.
///
/// The master is closed by `gui_env_deinit`: this call would save and empty it, and leave it open without settings.
///
/// @param env   environment from `gui_env_open`; null is nothing to do
/// @param save  whether changes are written to the files of their levels
/// @return true if no save failed; false for an environment that is not open, which is not touched
ORVIX_GSL_API bool gui_env_close(eeEnv* env, bool save);

/// Closes all environments, the one opened last first. If there were others than the master, the master itself is
/// dropped without being saved; alone, it is saved and closed like any other. The next `_ee` call or `gui_env_open`
/// reads the master's files afresh.
///
/// @param save  whether changes are written
/// @return true if no save failed
ORVIX_GSL_API bool gui_env_deinit(bool save);

/// Changes the working directory of the process, and reads the working directory's level of every open environment
/// from the new directory. If the change fails, these levels stay empty.
///
/// @param directory  directory to enter, with or without double quotes around it; "C:" means "C:\". Null fails and
///                   changes nothing.
/// @param save       whether changes at that level are saved in the old directory first; otherwise they are lost
/// @return 0; -1 if the directory cannot be entered, or if a save failed (the directory is changed all the same)
ORVIX_GSL_API int gui_chdir(const char* directory, bool save);

/// @return the root directory of the installation as set by `guienv_set_root_directory`, good until the next call of
///         that; null if none is set
ORVIX_GSL_API const char* guienv_get_root_directory(void);

/// Sets the root directory of the installation, which takes the place of `HXORVIX_DIR` in the names of the level 3 and
/// level 4 files. Applies to what is loaded from now on; nothing loaded changes.
///
/// @param path  directory, copied; null or "" takes the setting back
ORVIX_GSL_API void guienv_set_root_directory(const char* path);

/// @}
/// @name Settings
/// @{

/// Looks a setting up and copies its value. Settings removed by the program are not found.
///
/// @param env     open environment; null holds nothing
/// @param name    setting to look up; null and "" are never found
/// @param buffer  receives the value and its zero byte; null asks only whether the setting exists
/// @param aux     receives the entry's user pointer, which stays the caller's; may be null
/// @param size    bytes that `buffer` holds, zero byte included; ignored when `buffer` is null
/// @param loc     level to search; `ENVLOC_ANY`, `ENVLOC_FILE` and unknown numbers search all, nearest first
/// @return 0 if found; -1 if not; else the bytes that `buffer` must hold, with `buffer` and `aux` untouched
ORVIX_GSL_API long long gui_env_get(eeEnv* env, const char* name, char* buffer, void** aux, std::size_t size,
                                    EnvlocE loc);

/// `gui_env_get` on the master, which is brought up if needed.
ORVIX_GSL_API long long gui_env_get_ee(const char* name, char* buffer, void** aux, std::size_t size, EnvlocE loc);

/// Tells whether a setting exists.
///
/// @param env   open environment; null holds nothing
/// @param name  setting to look up; null and "" do not exist
/// @param loc   level to search, as in `gui_env_get`
/// @return true also for a setting with an empty value; false for one that was removed
ORVIX_GSL_API bool gui_env_exists(eeEnv* env, char* name, EnvlocE loc);

/// Stores a setting and marks it to be saved. A setting that exists on a level searched is changed where it stands,
/// also if it was removed before; a new one goes to the level `loc`, for `ENVLOC_ANY` and unknown numbers to level 1.
///
/// @param env    open environment; null fails
/// @param name   setting; null and "" fail
/// @param value  text, copied. White space at its ends, and what follows a line break, do not survive a save. Null
///               takes the value of an existing setting away (it then reads as empty) and stores no new one.
/// @param loc    level to search and to store in
/// @return true if stored; false also for a null value of a setting that does not exist, and without memory
ORVIX_GSL_API bool gui_env_put(eeEnv* env, const char* name, const char* value, EnvlocE loc);

/// `gui_env_put` on the master, which is brought up if needed.
ORVIX_GSL_API bool gui_env_put_ee(const char* name, const char* value, EnvlocE loc);

/// `gui_env_put` with a state of the caller's choice for a new setting. One that exists becomes `ENVMOD_CHANGED`,
/// unless it was included: then it stays `ENVMOD_INCLUDED`.
///
/// @param mod  state of a new entry
ORVIX_GSL_API bool gui_env_put_modnew(eeEnv* env, const char* name, const char* value, EnvlocE loc, EnvModE mod);

/// Removes a setting from the nearest level that holds it: it is hidden from reads, and its line leaves the file at the
/// next save. The same setting of a farther level then shows.
///
/// @param env   open environment; null holds nothing
/// @param name  setting; null and "" are never found
/// @param loc   level to search, as in `gui_env_get`
/// @return true if there was one
ORVIX_GSL_API bool gui_env_rm(eeEnv* env, const char* name, EnvlocE loc);

/// `gui_env_rm` on the master, which is brought up if needed.
ORVIX_GSL_API bool gui_env_rm_ee(const char* name, EnvlocE loc);

/// Another name of `gsl_getenv`.
ORVIX_GSL_API const char* gui_env_get_sys(const char* name);

/// Placeholder of the resource limits; touches nothing.
/// @return 1
ORVIX_GSL_API int gui_env_getrlimit(int resource);

/// Placeholder of the resource limits; touches nothing.
/// @return true
ORVIX_GSL_API bool gui_env_setrlimit(int resource, int limit);

/// Placeholder of the resource limits; touches nothing.
/// @return true
ORVIX_GSL_API bool gui_env_setrlimit_max(int resource);

/// @}
/// @name Expansion of references
/// @{

/// Replaces the references in a text by their values, and the references in those, until none is left.
///
///     $NAME   {$NAME}   process variable        (without value, HXORVIX_DIR stands for "\hxorvix")
///     %NAME   {%NAME}   setting of `env`, of the further environments, of the master: the first that has it
///
/// A bare name is made of ASCII letters, digits and `_`; a name in braces goes up to the `}`. Letters count as upper
/// case. A name of 63 bytes or more takes 63 and swallows the rest of the text. There is no escape. A reference that
/// yields nothing swallows the plain character behind it, so that in "%A:%B" an unknown `A` takes its separator along;
/// one `:` at the end of the text is cut after each round of replacement.
///
/// Texts that never come to an end give -1: a round that brings back a text seen before, a text more than 64 MiB longer
/// than the source, more than 20,000 rounds above the number of settings in sight, or 4 GiB of text rewritten in all
/// (where a reference counts as many bytes as its lookup takes nanoseconds).
///
/// @param dest  receives the text and its zero byte, or the empty string if the result is not 0; may be `src`. Null
///              asks only for the result.
/// @param src   text to expand; null gives -1
/// @param size  bytes that `dest` holds, zero byte included; with 0 `dest` is not touched
/// @param env   first environment to ask; null asks the master alone and hides the further ones
/// @param ...   further `eeEnv*` to ask, ended by a null pointer, which must be there
/// @return 0; -1 if nothing came out, or without memory; else the bytes that `dest` must hold
ORVIX_GSL_API long long gui_env_expand_str(char* dest, const char* src, std::size_t size, eeEnv* env, ...);

/// `gui_env_expand_str` for process variables alone: `%` and `{%` are plain text. `env` and what follows are ignored.
ORVIX_GSL_API long long gui_env_expand_str_system_only(char* dest, const char* src, std::size_t size, eeEnv* env, ...);

/// `gui_env_get`, and then `gui_env_expand_str` of the value in `buffer`.
///
/// @return as `gui_env_get` unless that gives 0, then as `gui_env_expand_str`: so -1 also for a value that expands to
///         nothing, and for a null `buffer`
ORVIX_GSL_API long long gui_env_get_and_expand(eeEnv* env, const char* name, char* buffer, void** aux, std::size_t size,
                                               EnvlocE loc);

/// `gui_env_get_and_expand` on the master, which is brought up if needed.
ORVIX_GSL_API long long gui_env_get_ee_and_expand(const char* name, char* buffer, void** aux, std::size_t size,
                                                  EnvlocE loc);

/// @}
/// @name Path lists
/// Elements are separated by `;` and by `:`, but the colon of a drive prefix at the head of an element (a letter, `:`,
/// and `/` or `\`) belongs to it: "C:\a;D:/b:c" is "C:\a", "D:/b" and "c".
/// @{

/// Steps through a path list. One walk at a time for the whole process; the list is copied.
///
/// @param dest    receives the element and its zero byte; null gives -1. Untouched unless the result is 0.
/// @param src     list to start with; null goes on with the list before. After a positive result null gives the same
///                element again, for a larger `dest`.
/// @param expand  whether the element is expanded, as by `gui_env_expand_str`
/// @param size    bytes that `dest` holds, zero byte included
/// @param env     as in `gui_env_expand_str`, with what follows
/// @return 0; -1 if the element expands to nothing (the walk goes on), or without memory; -2 at the end of the list and
///         before any list was given; else the bytes that `dest` must hold
ORVIX_GSL_API long long gui_env_extract_path(char* dest, char* src, bool expand, std::size_t size, eeEnv* env, ...);

/// Steps through a path list. One walk at a time for the whole process.
///
/// @param text  list to start with, which must stay alive and unchanged during the walk; null goes on
/// @return the element, possibly empty, in a buffer of the library that stays good until the next call. Null at the
///         end, and without memory: then "\nout of memory" goes to the standard error stream.
ORVIX_GSL_API char* gui_env_get_tok(char* text);

/// @}
