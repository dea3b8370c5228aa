#include "BuildCanceller.h"

#include "replay/XCUITestReplay.h"

#include <chrono>

BuildCanceller::BuildCanceller(Flag cancelled)
    : m_watcher([this, cancelled](std::stop_token stop) {
          std::unique_lock lock(m_mutex);
          while (!stop.stop_requested()) {
              if (cancelled->load())
                  XCUITestReplay::cancelActiveRuns();
              // Wakes at once when the replay is over (the watcher is stopped).
              m_wake.wait_for(lock, stop, std::chrono::milliseconds(50), [] { return false; });
          }
      })
{
}
