// The project file and the shared scheme of the runner project. Every object
// has a fixed identifier, "A" and 21 zeros and two hexadecimal digits, because
// the scheme names the two targets by them; every identifier used is defined.
// Builds never sign (CODE_SIGNING_ALLOWED = NO): they only ever run on the
// Simulator.
#include "RunnerTemplates.h"

namespace RunnerTemplates {

const char projectFile[] = R"pbxproj(// !$*UTF8*$!
{
	archiveVersion = 1;
	classes = {
	};
	objectVersion = 56;
	objects = {

/* Begin PBXBuildFile section */
		A00000000000000000000001 /* AutomationHostApp.swift in Sources */ = {isa = PBXBuildFile; fileRef = A00000000000000000000002 /* AutomationHostApp.swift */; };
		A00000000000000000000003 /* AutomationUITests.swift in Sources */ = {isa = PBXBuildFile; fileRef = A00000000000000000000004 /* AutomationUITests.swift */; };
/* End PBXBuildFile section */

/* Begin PBXContainerItemProxy section */
		A00000000000000000000005 /* PBXContainerItemProxy */ = {
			isa = PBXContainerItemProxy;
			containerPortal = A00000000000000000000006 /* Project object */;
			proxyType = 1;
			remoteGlobalIDString = A00000000000000000000007;
			remoteInfo = AutomationHost;
		};
/* End PBXContainerItemProxy section */

/* Begin PBXFileReference section */
		A00000000000000000000002 /* AutomationHostApp.swift */ = {isa = PBXFileReference; lastKnownFileType = sourcecode.swift; path = AutomationHostApp.swift; sourceTree = "<group>"; };
		A00000000000000000000004 /* AutomationUITests.swift */ = {isa = PBXFileReference; path = AutomationUITests.swift; sourceTree = "<group>"; };
		A00000000000000000000008 /* AutomationHost.app */ = {isa = PBXFileReference; explicitFileType = wrapper.application; includeInIndex = 0; path = AutomationHost.app; sourceTree = BUILT_PRODUCTS_DIR; };
		A00000000000000000000009 /* AutomationUITests.xctest */ = {isa = PBXFileReference; explicitFileType = wrapper.cfbundle; includeInIndex = 0; path = AutomationUITests.xctest; sourceTree = BUILT_PRODUCTS_DIR; };
/* End PBXFileReference section */

/* Begin PBXFrameworksBuildPhase section */
		A0000000000000000000000A /* Frameworks */ = {
			isa = PBXFrameworksBuildPhase;
			buildActionMask = 2147483647;
			files = (
			);
			runOnlyForDeploymentPostprocessing = 0;
		};
		A0000000000000000000000B /* Frameworks */ = {
			isa = PBXFrameworksBuildPhase;
			buildActionMask = 2147483647;
			files = (
			);
			runOnlyForDeploymentPostprocessing = 0;
		};
/* End PBXFrameworksBuildPhase section */

/* Begin PBXGroup section */
		A0000000000000000000000C = {
			isa = PBXGroup;
			children = (
				A0000000000000000000000D /* AutomationHost */,
				A0000000000000000000000E /* AutomationUITests */,
				A0000000000000000000000F /* Products */,
			);
			sourceTree = "<group>";
		};
		A0000000000000000000000D /* AutomationHost */ = {
			isa = PBXGroup;
			children = (
				A00000000000000000000002 /* AutomationHostApp.swift */,
			);
			path = AutomationHost;
			sourceTree = "<group>";
		};
		A0000000000000000000000E /* AutomationUITests */ = {
			isa = PBXGroup;
			children = (
				A00000000000000000000004 /* AutomationUITests.swift */,
			);
			path = AutomationUITests;
			sourceTree = "<group>";
		};
		A0000000000000000000000F /* Products */ = {
			isa = PBXGroup;
			children = (
				A00000000000000000000008 /* AutomationHost.app */,
				A00000000000000000000009 /* AutomationUITests.xctest */,
			);
			name = Products;
			sourceTree = "<group>";
		};
/* End PBXGroup section */

/* Begin PBXNativeTarget section */
		A00000000000000000000007 /* AutomationHost */ = {
			isa = PBXNativeTarget;
			buildConfigurationList = A00000000000000000000010 /* Build configuration list for PBXNativeTarget "AutomationHost" */;
			buildPhases = (
				A00000000000000000000011 /* Sources */,
				A0000000000000000000000A /* Frameworks */,
				A00000000000000000000012 /* Resources */,
			);
			buildRules = (
			);
			dependencies = (
			);
			name = AutomationHost;
			productName = AutomationHost;
			productReference = A00000000000000000000008 /* AutomationHost.app */;
			productType = "com.apple.product-type.application";
		};
		A00000000000000000000013 /* AutomationUITests */ = {
			isa = PBXNativeTarget;
			buildConfigurationList = A00000000000000000000014 /* Build configuration list for PBXNativeTarget "AutomationUITests" */;
			buildPhases = (
				A00000000000000000000015 /* Sources */,
				A0000000000000000000000B /* Frameworks */,
				A00000000000000000000016 /* Resources */,
			);
			buildRules = (
			);
			dependencies = (
				A00000000000000000000017 /* PBXTargetDependency */,
			);
			name = AutomationUITests;
			productName = AutomationUITests;
			productReference = A00000000000000000000009 /* AutomationUITests.xctest */;
			productType = "com.apple.product-type.bundle.ui-testing";
		};
/* End PBXNativeTarget section */

/* Begin PBXProject section */
		A00000000000000000000006 /* Project object */ = {
			isa = PBXProject;
			attributes = {
				BuildIndependentTargetsInParallel = 1;
				LastSwiftUpdateCheck = 1600;
				LastUpgradeCheck = 1600;
				TargetAttributes = {
					A00000000000000000000007 = {
						CreatedOnToolsVersion = 16.0;
					};
					A00000000000000000000013 = {
						CreatedOnToolsVersion = 16.0;
						TestTargetID = A00000000000000000000007;
					};
				};
			};
			buildConfigurationList = A00000000000000000000018 /* Build configuration list for PBXProject "AutomationRunner" */;
			compatibilityVersion = "Xcode 14.0";
			developmentRegion = en;
			hasScannedForEncodings = 0;
			knownRegions = (
				en,
				Base,
			);
			mainGroup = A0000000000000000000000C;
			productRefGroup = A0000000000000000000000F /* Products */;
			projectDirPath = "";
			projectRoot = "";
			targets = (
				A00000000000000000000007 /* AutomationHost */,
				A00000000000000000000013 /* AutomationUITests */,
			);
		};
/* End PBXProject section */

/* Begin PBXResourcesBuildPhase section */
		A00000000000000000000012 /* Resources */ = {
			isa = PBXResourcesBuildPhase;
			buildActionMask = 2147483647;
			files = (
			);
			runOnlyForDeploymentPostprocessing = 0;
		};
		A00000000000000000000016 /* Resources */ = {
			isa = PBXResourcesBuildPhase;
			buildActionMask = 2147483647;
			files = (
			);
			runOnlyForDeploymentPostprocessing = 0;
		};
/* End PBXResourcesBuildPhase section */

/* Begin PBXSourcesBuildPhase section */
		A00000000000000000000011 /* Sources */ = {
			isa = PBXSourcesBuildPhase;
			buildActionMask = 2147483647;
			files = (
				A00000000000000000000001 /* AutomationHostApp.swift in Sources */,
			);
			runOnlyForDeploymentPostprocessing = 0;
		};
		A00000000000000000000015 /* Sources */ = {
			isa = PBXSourcesBuildPhase;
			buildActionMask = 2147483647;
			files = (
				A00000000000000000000003 /* AutomationUITests.swift in Sources */,
			);
			runOnlyForDeploymentPostprocessing = 0;
		};
/* End PBXSourcesBuildPhase section */

/* Begin PBXTargetDependency section */
		A00000000000000000000017 /* PBXTargetDependency */ = {
			isa = PBXTargetDependency;
			target = A00000000000000000000007 /* AutomationHost */;
			targetProxy = A00000000000000000000005 /* PBXContainerItemProxy */;
		};
/* End PBXTargetDependency section */

/* Begin XCBuildConfiguration section */
		A00000000000000000000019 /* Debug */ = {
			isa = XCBuildConfiguration;
			buildSettings = {
				ALWAYS_SEARCH_USER_PATHS = NO;
				CLANG_ANALYZER_NONNULL = YES;
				CLANG_ENABLE_MODULES = YES;
				CLANG_ENABLE_OBJC_ARC = YES;
				CLANG_WARN_BOOL_CONVERSION = YES;
				CLANG_WARN_CONSTANT_CONVERSION = YES;
				CLANG_WARN_EMPTY_BODY = YES;
				CLANG_WARN_ENUM_CONVERSION = YES;
				CLANG_WARN_INFINITE_RECURSION = YES;
				CLANG_WARN_INT_CONVERSION = YES;
				CLANG_WARN_UNREACHABLE_CODE = YES;
				CODE_SIGNING_ALLOWED = NO;
				COPY_PHASE_STRIP = NO;
				DEBUG_INFORMATION_FORMAT = dwarf;
				ENABLE_STRICT_OBJC_MSGSEND = YES;
				ENABLE_TESTABILITY = YES;
				GCC_NO_COMMON_BLOCKS = YES;
				GCC_OPTIMIZATION_LEVEL = 0;
				GCC_PREPROCESSOR_DEFINITIONS = (
					"DEBUG=1",
					"$(inherited)",
				);
				GCC_WARN_ABOUT_RETURN_TYPE = YES_ERROR;
				GCC_WARN_UNDECLARED_SELECTOR = YES;
				GCC_WARN_UNINITIALIZED_AUTOS = YES_AGGRESSIVE;
				GCC_WARN_UNUSED_FUNCTION = YES;
				GCC_WARN_UNUSED_VARIABLE = YES;
				IPHONEOS_DEPLOYMENT_TARGET = 15.0;
				ONLY_ACTIVE_ARCH = YES;
				SDKROOT = iphoneos;
				SWIFT_ACTIVE_COMPILATION_CONDITIONS = "DEBUG $(inherited)";
				SWIFT_OPTIMIZATION_LEVEL = "-Onone";
			};
			name = Debug;
		};
		A0000000000000000000001A /* Release */ = {
			isa = XCBuildConfiguration;
			buildSettings = {
				CODE_SIGNING_ALLOWED = NO;
				IPHONEOS_DEPLOYMENT_TARGET = 15.0;
				SDKROOT = iphoneos;
				SWIFT_COMPILATION_MODE = wholemodule;
				SWIFT_OPTIMIZATION_LEVEL = "-O";
			};
			name = Release;
		};
		A0000000000000000000001B /* Debug */ = {
			isa = XCBuildConfiguration;
			buildSettings = {
				ASSETCATALOG_COMPILER_APPICON_NAME = "";
				CODE_SIGNING_ALLOWED = NO;
				CURRENT_PROJECT_VERSION = 1;
				GENERATE_INFOPLIST_FILE = YES;
				INFOPLIST_KEY_UILaunchScreen_Generation = YES;
				IPHONEOS_DEPLOYMENT_TARGET = 15.0;
				MARKETING_VERSION = 1.0;
				PRODUCT_BUNDLE_IDENTIFIER = com.vantrel.replay.AutomationHost;
				PRODUCT_NAME = "$(TARGET_NAME)";
				SDKROOT = iphoneos;
				SUPPORTED_PLATFORMS = "iphonesimulator iphoneos";
				SUPPORTS_MACCATALYST = NO;
				SWIFT_VERSION = 5.0;
				TARGETED_DEVICE_FAMILY = "1,2";
			};
			name = Debug;
		};
		A0000000000000000000001C /* Release */ = {
			isa = XCBuildConfiguration;
			buildSettings = {
				CODE_SIGNING_ALLOWED = NO;
				CURRENT_PROJECT_VERSION = 1;
				GENERATE_INFOPLIST_FILE = YES;
				INFOPLIST_KEY_UILaunchScreen_Generation = YES;
				IPHONEOS_DEPLOYMENT_TARGET = 15.0;
				MARKETING_VERSION = 1.0;
				PRODUCT_BUNDLE_IDENTIFIER = com.vantrel.replay.AutomationHost;
				PRODUCT_NAME = "$(TARGET_NAME)";
				SDKROOT = iphoneos;
				SUPPORTED_PLATFORMS = "iphonesimulator iphoneos";
				SUPPORTS_MACCATALYST = NO;
				SWIFT_VERSION = 5.0;
				TARGETED_DEVICE_FAMILY = "1,2";
			};
			name = Release;
		};
		A0000000000000000000001D /* Debug */ = {
			isa = XCBuildConfiguration;
			buildSettings = {
				CODE_SIGNING_ALLOWED = NO;
				GENERATE_INFOPLIST_FILE = YES;
				IPHONEOS_DEPLOYMENT_TARGET = 15.0;
				PRODUCT_BUNDLE_IDENTIFIER = com.vantrel.replay.AutomationUITests;
				PRODUCT_NAME = "$(TARGET_NAME)";
				SDKROOT = iphoneos;
				SUPPORTED_PLATFORMS = "iphonesimulator iphoneos";
				SWIFT_VERSION = 5.0;
				TARGETED_DEVICE_FAMILY = "1,2";
				TEST_TARGET_NAME = AutomationHost;
			};
			name = Debug;
		};
		A0000000000000000000001E /* Release */ = {
			isa = XCBuildConfiguration;
			buildSettings = {
				CODE_SIGNING_ALLOWED = NO;
				GENERATE_INFOPLIST_FILE = YES;
				IPHONEOS_DEPLOYMENT_TARGET = 15.0;
				PRODUCT_BUNDLE_IDENTIFIER = com.vantrel.replay.AutomationUITests;
				PRODUCT_NAME = "$(TARGET_NAME)";
				SDKROOT = iphoneos;
				SUPPORTED_PLATFORMS = "iphonesimulator iphoneos";
				SWIFT_VERSION = 5.0;
				TARGETED_DEVICE_FAMILY = "1,2";
				TEST_TARGET_NAME = AutomationHost;
			};
			name = Release;
		};
/* End XCBuildConfiguration section */

/* Begin XCConfigurationList section */
		A00000000000000000000010 /* Build configuration list for PBXNativeTarget "AutomationHost" */ = {
			isa = XCConfigurationList;
			buildConfigurations = (
				A0000000000000000000001B /* Debug */,
				A0000000000000000000001C /* Release */,
			);
			defaultConfigurationIsVisible = 0;
			defaultConfigurationName = Debug;
		};
		A00000000000000000000014 /* Build configuration list for PBXNativeTarget "AutomationUITests" */ = {
			isa = XCConfigurationList;
			buildConfigurations = (
				A0000000000000000000001D /* Debug */,
				A0000000000000000000001E /* Release */,
			);
			defaultConfigurationIsVisible = 0;
			defaultConfigurationName = Debug;
		};
		A00000000000000000000018 /* Build configuration list for PBXProject "AutomationRunner" */ = {
			isa = XCConfigurationList;
			buildConfigurations = (
				A00000000000000000000019 /* Debug */,
				A0000000000000000000001A /* Release */,
			);
			defaultConfigurationIsVisible = 0;
			defaultConfigurationName = Debug;
		};
/* End XCConfigurationList section */
	};
	rootObject = A00000000000000000000006 /* Project object */;
}
)pbxproj";

const char scheme[] = R"scheme(<?xml version="1.0" encoding="UTF-8"?>
<Scheme
   LastUpgradeVersion = "1600"
   version = "1.7">
   <BuildAction
      parallelizeBuildables = "YES"
      buildImplicitDependencies = "YES">
      <BuildActionEntries>
         <BuildActionEntry
            buildForTesting = "YES"
            buildForRunning = "YES"
            buildForProfiling = "YES"
            buildForArchiving = "YES"
            buildForAnalyzing = "YES">
            <BuildableReference
               BuildableIdentifier = "primary"
               BlueprintIdentifier = "A00000000000000000000007"
               BuildableName = "AutomationHost.app"
               BlueprintName = "AutomationHost"
               ReferencedContainer = "container:AutomationRunner.xcodeproj">
            </BuildableReference>
         </BuildActionEntry>
         <BuildActionEntry
            buildForTesting = "YES"
            buildForRunning = "NO"
            buildForProfiling = "NO"
            buildForArchiving = "NO"
            buildForAnalyzing = "YES">
            <BuildableReference
               BuildableIdentifier = "primary"
               BlueprintIdentifier = "A00000000000000000000013"
               BuildableName = "AutomationUITests.xctest"
               BlueprintName = "AutomationUITests"
               ReferencedContainer = "container:AutomationRunner.xcodeproj">
            </BuildableReference>
         </BuildActionEntry>
      </BuildActionEntries>
   </BuildAction>
   <TestAction
      buildConfiguration = "Debug"
      selectedDebuggerIdentifier = "Xcode.DebuggerFoundation.Debugger.LLDB"
      selectedLauncherIdentifier = "Xcode.DebuggerFoundation.Launcher.LLDB"
      shouldUseLaunchSchemeArgsEnv = "YES"
      shouldAutocreateTestPlan = "YES">
      <Testables>
         <TestableReference
            skipped = "NO">
            <BuildableReference
               BuildableIdentifier = "primary"
               BlueprintIdentifier = "A00000000000000000000013"
               BuildableName = "AutomationUITests.xctest"
               BlueprintName = "AutomationUITests"
               ReferencedContainer = "container:AutomationRunner.xcodeproj">
            </BuildableReference>
         </TestableReference>
      </Testables>
   </TestAction>
   <LaunchAction
      buildConfiguration = "Debug"
      selectedDebuggerIdentifier = "Xcode.DebuggerFoundation.Debugger.LLDB"
      selectedLauncherIdentifier = "Xcode.DebuggerFoundation.Launcher.LLDB"
      launchStyle = "0"
      useCustomWorkingDirectory = "NO"
      ignoresPersistentStateOnLaunch = "NO"
      debugDocumentVersioning = "YES"
      debugServiceExtension = "internal"
      allowLocationSimulation = "YES">
      <BuildableProductRunnable
         runnableDebuggingMode = "0">
         <BuildableReference
            BuildableIdentifier = "primary"
            BlueprintIdentifier = "A00000000000000000000007"
            BuildableName = "AutomationHost.app"
            BlueprintName = "AutomationHost"
            ReferencedContainer = "container:AutomationRunner.xcodeproj">
         </BuildableReference>
      </BuildableProductRunnable>
   </LaunchAction>
   <ProfileAction
      buildConfiguration = "Release"
      shouldUseLaunchSchemeArgsEnv = "YES"
      savedToolIdentifier = ""
      useCustomWorkingDirectory = "NO"
      debugDocumentVersioning = "YES">
      <BuildableProductRunnable
         runnableDebuggingMode = "0">
         <BuildableReference
            BuildableIdentifier = "primary"
            BlueprintIdentifier = "A00000000000000000000007"
            BuildableName = "AutomationHost.app"
            BlueprintName = "AutomationHost"
            ReferencedContainer = "container:AutomationRunner.xcodeproj">
         </BuildableReference>
      </BuildableProductRunnable>
   </ProfileAction>
   <AnalyzeAction
      buildConfiguration = "Debug">
   </AnalyzeAction>
   <ArchiveAction
      buildConfiguration = "Release"
      revealArchiveInOrganizer = "YES">
   </ArchiveAction>
</Scheme>
)scheme";

} // namespace RunnerTemplates
