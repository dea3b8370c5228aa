#include "BuildCanceller.h"

#include "replay/XCUITestReplay.h"

#include <chrono>

BuildCanceller::BuildCanceller(Flag cancelled)
    : m_watcher([this, cancelled] {
          std::unique_lock lock(m_mutex);
          while (!m_stopping) {
              if (cancelled->load())
                  XCUITestReplay::cancelActiveRuns();
              m_wake.wait_for(lock, std::chrono::milliseconds(50), [this] { return m_stopping; });
          }
      })
{
}

BuildCanceller::~BuildCanceller()
{
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_all();
    m_watcher.join();
}
