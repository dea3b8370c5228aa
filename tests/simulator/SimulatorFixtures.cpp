// Sample outputs of the simulator tools and a sample Info.plist. They live
// apart from the test classes because moc does not read raw string literals.

#include "SimulatorFixtures.h"

namespace SimulatorFixtures {

const char *const mixedDeviceList = R"({"devices": {
  "com.apple.CoreSimulator.SimRuntime.iOS-18-0": [
    {"name": "iPhone 15", "udid": "B", "state": "Shutdown", "isAvailable": true},
    {"name": "iPad Air", "udid": "C", "state": "Booted", "extra": [1, 2]},
    {"name": "Gone", "udid": "D", "state": "Shutdown", "isAvailable": false}
  ],
  "com.apple.CoreSimulator.SimRuntime.iOS-17-5": [
    {"name": "iPhone 15", "udid": "A", "state": "Booted"},
    {"name": "No State", "udid": "E", "state": null, "isAvailable": null}
  ],
  "com.apple.CoreSimulator.SimRuntime.watchOS-10-0": [
    {"name": "Apple Watch", "udid": "W", "state": "Booted"}
  ],
  "com.apple.CoreSimulator.SimRuntime.tvOS-17-0": [{"name": "Apple TV", "udid": "T", "state": "Booted"}],
  "com.apple.CoreSimulator.SimRuntime.xrOS-1-0": [{"name": "Vision", "udid": "V", "state": "Booted"}],
  "com.apple.CoreSimulator.SimRuntime.iPadOS-26-0": [{"name": "iPad Pro", "udid": "P", "state": "Shutdown"}]
}})";

const char *const listAppsOutput = R"({
    "com.apple.Preferences" =     {
        ApplicationType = System;
        CFBundleDisplayName = Settings;
        CFBundleIdentifier = "com.apple.Preferences";
    };
    "com.example.app10" =     {
        ApplicationType = User;
        CFBundleDisplayName = "App 10";
        GroupContainers =         {
            "group.example" = "file:///containers/group/";
        };
    };
    "com.example.app2" =     {
        ApplicationType = User;
        CFBundleDisplayName = "App 2";
        CFBundleName = Ignored;
    };
    "com.example.named" =     {
        ApplicationType = User;
        CFBundleName = "banana";
    };
    "com.example.bare" =     {
        ApplicationType = User;
        SBAppTags =         (
        );
    };
    "com.example.cafe" =     {
        ApplicationType = User;
        CFBundleDisplayName = "Caf\U00e9 \"Noir\" \\ Bar";
    };
    "com.example.empty" =     {
    };
    "com.example.hidden" =     {
        ApplicationType = Hidden;
        CFBundleDisplayName = Hidden;
    };
})";

const char *const xmlInfoPlist = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
  <key>CFBundleIdentifier</key><string>com.example.demo</string>
  <key>CFBundleDisplayName</key><string>Démo</string>
  <key>CFBundleName</key><string>DemoName</string>
  <key>CFBundleSupportedPlatforms</key><array><string>iPhoneSimulator</string></array>
</dict>
</plist>
)";

} // namespace SimulatorFixtures
