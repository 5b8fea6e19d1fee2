/// @file
/// Settings of one application environment, by name, in short calls that return strings on the heap.
///
/// An application selects its environment once, with `astr_set_environment`, and then reads it with
/// `astr_environment_value`. The calls that take an environment's name as well reach any other one; each of these opens
/// and reads all files of that name, and closes it again, so whoever reads many values selects the environment first.
/// An object of the application, an `ASTR_ApplicationEnvironmentOverride`, may answer for a name in place of its files.
///
/// Strings that these calls return are the caller's, to be given back with `astr_free_string` or `free`, but for
/// `astr_get_environment`. Exhausted memory ends in `aerr_memory_error` where nothing else is said. No call sets
/// `GuiErrno`.
///
/// The selected environment, its override and the list of overrides belong to the process and are not synchronised:
/// one thread at a time. The library does not close the selected environment at exit: a program with changes to keep
/// calls `astr_close_environment` or `astr_set_environment(nullptr)`. `gui_env_deinit` closes it like every other one;
/// it then counts as closed by `astr_close_environment`.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdint>
#include <memory>

/// A level, in numbers of this family's own. The site's level has none: it is only reached through `ASTR_ENVLOC_ANY`,
/// as which every other number acts.
enum AstrEnvlocE : std::int32_t {
    ASTR_ENVLOC_CWD = 0,     ///< the working directory's level, `ENVLOC_CWD`
    ASTR_ENVLOC_USER = 1,    ///< the user's level, `ENVLOC_USER`
    ASTR_ENVLOC_SYSTEM = 2,  ///< the installation's level, `ENVLOC_SYSTEM`
    ASTR_ENVLOC_ANY = 4,     ///< all levels, nearest first, `ENVLOC_ANY`
};

/// An object that answers for an environment's name, so that its values come from somewhere else than `.cfg` files.
/// Applications derive from it and register the object.
///
///     class FromDatabase : public ASTR_ApplicationEnvironmentOverride {
///     public:
///         FromDatabase() : ASTR_ApplicationEnvironmentOverride("layout") { register_override(this); }
///         char* get_value(const char* name, AstrEnvlocE loc) override;
///         ...
///     };
///
/// The object stays the application's. It answers the calls that name its environment from its registration to its
/// end; it becomes part of the selected environment when `astr_set_environment` selects its name.
///
/// Copying an object is not supported beyond this: the copy answers for the same name and shares its text (the same
/// pointer), and the copy is not registered.
class ORVIX_GSL_API ASTR_ApplicationEnvironmentOverride {
public:
    /// @param name  environment to answer for, copied; null answers for none
    explicit ASTR_ApplicationEnvironmentOverride(const char* name);

    /// Shares the name's text.
    ASTR_ApplicationEnvironmentOverride(const ASTR_ApplicationEnvironmentOverride& other);
    /// Shares the name's text.
    ASTR_ApplicationEnvironmentOverride& operator=(const ASTR_ApplicationEnvironmentOverride& other);

    /// Takes the object out of the list, and out of the selected environment if it is its override: nothing then
    /// stands behind that environment's name until the next `astr_set_environment`.
    virtual ~ASTR_ApplicationEnvironmentOverride();

    /// Looks a value up.
    ///
    /// @param name  setting, as the caller gave it
    /// @param loc   level, as the caller gave it; `ASTR_ENVLOC_ANY` from calls that take none
    /// @return a new string, final with all references replaced, which becomes the caller's; null if there is none
    virtual char* get_value(const char* name, AstrEnvlocE loc) = 0;

    /// Looks a value up at all levels.
    ///
    /// @param name  setting, as the caller gave it
    /// @return a new string with its references left as they are, which becomes the caller's; null if there is none
    virtual char* get_value_not_expanded(const char* name) = 0;

    /// Stores a value.
    ///
    /// @param name   setting, as the caller gave it
    /// @param value  text, as the caller gave it; stays the caller's
    /// @param loc    level, as the caller gave it
    virtual void set_value(const char* name, const char* value, AstrEnvlocE loc) = 0;

    /// Replaces the references in a text.
    ///
    /// @param text  text, as the caller gave it; stays the caller's
    /// @return a new string, which becomes the caller's; null if nothing comes out
    virtual char* expand_value(const char* text) = 0;

    /// @return the name of the environment, good as long as this object or a copy of it lives; null if there is none
    const char* get_env_name() const;

    /// Adds an object to the end of the list. The first one in the list that bears a name answers for it. An object
    /// that was added twice is taken out of the list as a whole when it dies.
    ///
    /// @param override  object to add, which must not be destroyed other than by its destructor; null adds nothing
    static void register_override(ASTR_ApplicationEnvironmentOverride* override);

private:
    std::shared_ptr<const char[]> env_name;
};

/// @name The selected environment
/// @{

/// Selects the application's environment. The one selected before is closed with its changes saved, also if it is the
/// same: its files are then read afresh.
///
/// @param name  base name of the environment's files, copied, or the name of a registered override; null and "" select
///              none
ORVIX_GSL_API void astr_set_environment(const char* name);

/// @return the name of the selected environment, good until another one is selected, not to be freed; null if none is
ORVIX_GSL_API const char* astr_get_environment(void);

/// Closes the selected environment with its changes saved, and lets go of its override. Its name stays selected with
/// nothing behind it: until the next `astr_set_environment`, every call that means it finds nothing, also those that
/// name it, unless a registered override answers for that name.
ORVIX_GSL_API void astr_close_environment(void);

/// Reads a setting of the selected environment at all levels, nearest first, and replaces the references in it.
///
/// @param name  setting to look up; null and "" are never found
/// @return the value; null if no environment is selected or nothing stands behind it, if there is no such setting, or
///         if nothing is left of its value, as of an empty one
ORVIX_GSL_API char* astr_environment_value(const char* name);

/// `astr_environment_value` with the references left as they are.
///
/// @param name  setting to look up; null and "" are never found
/// @return the value, also an empty one; null as there
ORVIX_GSL_API char* astr_environment_value_not_expanded(const char* name);

/// `astr_environment_value` into a buffer of the caller.
///
/// An override's answer is copied, and its string is not freed: overrides that serve this call keep their strings
/// themselves.
///
/// @param name    setting to look up; null and "" are never found
/// @param buffer  receives the value and its zero byte. With null the result is false, but with an override it tells
///                whether there is a value.
/// @param size    bytes that `buffer` holds, zero byte included; negative numbers count as 0
/// @return true if the buffer holds the value; false if there is none or if it does not fit. `buffer` is then
///         untouched, or, if the value as it is stored did fit, empty.
ORVIX_GSL_API bool astr_environment_string(const char* name, char* buffer, int size);

/// @}
/// @name Environments by name
/// A name means, in this order: the first registered override that bears it; the selected environment; an environment
/// that is opened for the length of the call.
/// @{

/// Reads a setting and replaces the references in it.
///
/// @param env   name of the environment; null and "" give null, whatever is selected
/// @param name  setting to look up; null and "" are never found
/// @param loc   level to search
/// @return the value; "" and not null if there is no such setting or if nothing is left of its value, unlike
///         `astr_environment_value`; null also if nothing stands behind the name
ORVIX_GSL_API char* astr_get_environment_value(const char* env, const char* name, AstrEnvlocE loc);

/// Stores a setting, and saves it if asked.
///
/// With `save` the environment is closed with all its changes saved. The selected one is then opened again from its
/// files, so that the program sees what was saved. Without `save` a setting of the selected environment stays until
/// the environment is closed, and one of any other environment is lost.
///
/// @param env    name of the environment; null and "" fail
/// @param name   setting; null and "" fail
/// @param value  text, copied; null takes the value of an existing setting away and stores no new one
/// @param loc    level to search and to store in, as in `gui_env_put`
/// @param save   whether the files are written
/// @return true if the setting was stored; whether it was saved is not told. Always true with an override.
ORVIX_GSL_API bool astr_set_environment_value(const char* env, const char* name, const char* value, AstrEnvlocE loc,
                                              bool save);

/// Tells whether a setting exists.
///
/// The string with which an override answers is not freed: overrides that serve this call keep their strings
/// themselves.
///
/// @param env   name of the environment; null means the selected one with its override, "" the selected one alone
/// @param name  setting to look up; null and "" are never found
/// @param loc   level to search
/// @return true also for a setting with an empty value
ORVIX_GSL_API bool astr_environment_var_exists(const char* env, const char* name, AstrEnvlocE loc);

/// Replaces the references in a text by the values of an environment.
///
/// An environment that is opened for this call stays open, among those that `gui_env_deinit` closes. Programs that
/// expand many texts select their environment first.
///
/// @param env   name of the environment; null and "" give null
/// @param text  text to expand; null gives null
/// @return the text; null if nothing is left of it, or if nothing stands behind the name
ORVIX_GSL_API char* astr_expand_environment_value(const char* env, const char* text);

/// @}
/// @name Variable functions
/// @{

/// Writes a name as a variable function.
///
///     astr_add_var_fn("x")  ->  var("x")
///
/// @param name  text to wrap; null gives null
/// @return the new text; null also without memory
ORVIX_GSL_API char* astr_add_var_fn(const char* name);

/// Takes the name out of a variable function.
///
///     astr_delete_var_fn("var(\"x\")")  ->  x
///     astr_delete_var_fn("var(x)")      ->  null
///
/// @param text  text to unwrap
/// @return the text between `var("` and `")`; null for null, for a text that does not begin and end so, and without
///         memory
ORVIX_GSL_API char* astr_delete_var_fn(const char* text);

/// @}

/// Finds the web browser: the setting `WEB_BROWSER` of the environment "de_sim", if it names something that exists;
/// otherwise, on systems with a registry, the program that opens links there, or else the one that opens pages.
///
/// @return the command, which the caller frees; "" if there is none
ORVIX_GSL_API char* gui_env_getwebbrowser(void);
