#pragma once
// Sample texts for the simulator tests.

namespace SimulatorFixtures {
// `simctl list devices --json` with iOS, iPadOS, watch, TV and vision
// runtimes, unavailable devices and a device without state.
extern const char *const mixedDeviceList;
// `simctl listapps` with system, user and hidden apps, nested blocks,
// missing names and escaped text.
extern const char *const listAppsOutput;
// An XML Info.plist of a simulator build of com.example.demo.
extern const char *const xmlInfoPlist;
}
