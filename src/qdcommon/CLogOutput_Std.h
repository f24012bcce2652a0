// The console: one shared sink on the standard output, installed with the logger as often as it is asked for.
#pragma once

#include "qdcommon/CLogOutput.h"

class CLogOutput_Std : public CLogOutput
{
  public:
    static CLogOutput_Std ms_spObjSingleton;

    // Installs the shared console output with the logger on the first call; later calls only count. False
    // without a logger.
    static bool InstallStdOut();

    void WriteLine(std::string_view strLine, int nLevel) override;

  private:
    CLogOutput_Std();
    // Returns how often the output has been installed, this call included.
    int IncInstallCount() { return ++m_nInstallCount; }

    int m_nInstallCount = 0;
};
