#pragma once
// The fixed texts of the generated UI-test runner project. The product never
// interprets them; they are written out as they stand, with the few values
// that change per run spliced into the UI-test source around them.

namespace RunnerTemplates {

// AutomationHost/AutomationHostApp.swift: an app that shows nothing; a
// UI-testing bundle needs a host target to build against.
extern const char hostSource[];

// AutomationUITests/AutomationUITests.swift, before the spliced properties:
// the import, the class opening and the Step record.
extern const char uiTestHeader[];
// After the steps array: the replay itself. `outputDirectoryKeyPlaceholder`
// stands once for the quoted name of the output-directory variable.
extern const char uiTestBody[];
extern const char outputDirectoryKeyPlaceholder[];

// AutomationRunner.xcodeproj/project.pbxproj
extern const char projectFile[];
// AutomationRunner.xcodeproj/xcshareddata/xcschemes/AutomationHost.xcscheme
extern const char scheme[];

} // namespace RunnerTemplates
