/* base.h: what all calls share. The conventions stand in zorbase.h. */
#pragma once

/* C has its own ways, which the checks for C++ complain about. NOLINTBEGIN(modernize-*) */

#include <ZORBase/common/Export.h>
#include <stddef.h>
#include <stdint.h>

/* In C++ the calls have C linkage and raise nothing. */
#ifdef __cplusplus
#define ZORBASE_BEGIN_C extern "C" {
#define ZORBASE_END_C }
#define ZORBASE_NOEXCEPT noexcept
#else
#define ZORBASE_BEGIN_C
#define ZORBASE_END_C
#define ZORBASE_NOEXCEPT
#endif

ZORBASE_BEGIN_C

/* ---------------------------------------------------------------------------------------------- statuses */

/** What became of a call. */
typedef int32_t zorbase_status;
enum {
  ZORBASE_OK = 0,
  ZORBASE_ERROR = 1,        /**< the library's general error, with the text that it has in C++ */
  ZORBASE_BAD_ARGUMENT = 2, /**< a null pointer, a count, a capacity or a struct's size; nothing was done */
  ZORBASE_NOT_POSSIBLE = 3, /**< not with this input, such as a curve through three poses */
  ZORBASE_NO_MEMORY = 4,
  ZORBASE_UNEXPECTED = 5 /**< an error that is none of the library's own: a defect, please report it */
};

/** \return what the last call on this thread has to say: why it failed, and "" when it went well. The text is cut at
 *  2047
 *          bytes, with "..." at its end. It stays until the next call on this thread; copy what is to last longer. */
ZORBASE_API const char* zorbase_last_error(void) ZORBASE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------- version */

/** The version of this interface. It grows with every call or field that is added; none is ever changed or removed. */
#define ZORBASE_INTERFACE_VERSION 1

/** \return ZORBASE_INTERFACE_VERSION of the library itself; a host that needs a newer one compares them at its start.
 *  */
ZORBASE_API int32_t zorbase_interface_version(void) ZORBASE_NOEXCEPT;

/** \return the version of the library: "1.2.3". The text is always there. */
ZORBASE_API const char* zorbase_version(void) ZORBASE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------- start and stop */

/** Starts the modules of the library, as Initialize does: its logger is there from then on. Calls nest; each one needs
 *  a zorbase_stop. The other calls of this interface work without it. */
ZORBASE_API zorbase_status zorbase_start(void) ZORBASE_NOEXCEPT;

/** Stops the modules, as Finalize does, when it answers the first zorbase_start. A stop without a start is the caller's
 *  error: it uses up the next start. */
ZORBASE_API zorbase_status zorbase_stop(void) ZORBASE_NOEXCEPT;

/** Switches the library's logger on (1) or off (0). It is on at the start when a debugger is attached. ZORBASE_ERROR
 *  while the library is not started. */
ZORBASE_API zorbase_status zorbase_set_log_enabled(int32_t enabled) ZORBASE_NOEXCEPT;

ZORBASE_END_C
/* NOLINTEND(modernize-*) */
