// Named log sources: where a message comes from, and how much of it is wanted.
#pragma once

// Levels of the messages: lower is graver.
enum ELogLevel
{
    LOG_FAIL = 0,
    LOG_ERROR = 1,   // errors and failed checks
    LOG_WARNING = 4, // warnings, and operations that are deliberately not provided
    LOG_INFO = 7,    // progress and debug dumps
    LOG_DETAIL = 15  // lines that come once per element of a big file
};

// A global object with a level threshold: a message is produced only when the threshold is at least its
// level.
class CLogSource
{
  public:
    static constexpr int DEFAULT_THRESHOLD = LOG_INFO;

    explicit CLogSource(const char* szName);
    ~CLogSource();
    CLogSource(const CLogSource&) = delete;
    CLogSource& operator=(const CLogSource&) = delete;

    const char* GetName() const { return m_szName; }
    bool Accepts(int nLevel) const { return m_nThreshold >= nLevel; }
    int GetThreshold() const { return m_nThreshold; }
    void SetThreshold(int nThreshold) { m_nThreshold = nThreshold; }

    // Sets the threshold of every source of the process.
    static void SetAllThresholds(int nThreshold);

  private:
    const char* m_szName;
    int m_nThreshold = DEFAULT_THRESHOLD;
    CLogSource* m_pNext;

    static CLogSource* ms_pFirst;
};

// The sources of the common code and of the checks. Other libraries define their own.
extern CLogSource QD_DEFAULT;
extern CLogSource QD_CHECKS;
