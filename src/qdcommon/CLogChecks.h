// The one family of checks. Each tests an expression, logs it at the error level with the calling function,
// file and line when it fails, and returns the caller's failure value (left empty in a function that returns
// nothing). The text of the expression is part of what users read, so the names in it are chosen with care.
#pragma once

#include "qdcommon/CLog.h"

#define QD_CHECK_FAILED(TEXT, EXPRESSION) Log(QD_CHECKS, LOG_ERROR, TEXT, EXPRESSION)

#define QD_CHECK_OR_RETURN(CONDITION, TEXT, EXPRESSION, ...)                                                 \
    do                                                                                                       \
    {                                                                                                        \
        if (!(CONDITION))                                                                                    \
        {                                                                                                    \
            QD_CHECK_FAILED(TEXT, EXPRESSION);                                                               \
            return __VA_ARGS__;                                                                              \
        }                                                                                                    \
    } while (false)

// A condition that must hold.
#define QD_CHECK(EXPRESSION, ...) QD_CHECK_OR_RETURN(EXPRESSION, "%s is false", #EXPRESSION, __VA_ARGS__)
// A result or member that must be there.
#define QD_CHECK_NOT_NULL(EXPRESSION, ...)                                                                   \
    QD_CHECK_OR_RETURN(EXPRESSION, "%s is NULL", #EXPRESSION, __VA_ARGS__)
// An argument that must be there.
#define QD_CHECK_ARG(EXPRESSION, ...)                                                                        \
    QD_CHECK_OR_RETURN(EXPRESSION, "Handed in NULL %s", #EXPRESSION, __VA_ARGS__)
// An object that must have been made.
#define QD_CHECK_CREATED(EXPRESSION, ...)                                                                    \
    QD_CHECK_OR_RETURN(EXPRESSION, "Creation of %s failed", #EXPRESSION, __VA_ARGS__)
// A call that must succeed.
#define QD_CHECK_CALL(EXPRESSION, ...)                                                                       \
    QD_CHECK_OR_RETURN(EXPRESSION, "Call %s failed", #EXPRESSION, __VA_ARGS__)
// A state that only a fault of our own can break.
#define QD_ASSERT(EXPRESSION, ...)                                                                           \
    QD_CHECK_OR_RETURN(EXPRESSION, "Assert '%s' failed", #EXPRESSION, __VA_ARGS__)
