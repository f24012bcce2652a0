// Sends what the COLLADA DOM reports to the log.
#pragma once

#include <dae/daeErrorHandler.h>

// The DOM's error handler for as long as it lives.
class CDAEErrorHandler : public daeErrorHandler
{
  public:
    CDAEErrorHandler();
    CDAEErrorHandler(const CDAEErrorHandler&) = delete;
    CDAEErrorHandler& operator=(const CDAEErrorHandler&) = delete;
    ~CDAEErrorHandler() override;

    void handleError(daeString szMessage) override;
    void handleWarning(daeString szMessage) override;
};
