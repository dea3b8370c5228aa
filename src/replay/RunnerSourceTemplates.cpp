// The Swift sources of the runner project. The UI test drives the target app
// by bundle identifier from outside (the host app only exists so that the
// testing bundle has a target), so everything here must compile against the
// public XCTest and SwiftUI API of the deployment target (iOS 15) as it stands.
// XCUIApplication and friends are main-actor types, hence @MainActor on the
// test method and the helpers that touch them.
#include "RunnerTemplates.h"

namespace RunnerTemplates {

const char hostSource[] = R"swift(import SwiftUI

@main
struct AutomationHostApp: App {
    var body: some Scene {
        WindowGroup {
            Color.clear
        }
    }
}
)swift";

const char uiTestHeader[] = R"swift(import XCTest

final class AutomationUITests: XCTestCase {
    struct Step {
        let kind: String
        let x: Double
        let y: Double
        let endX: Double
        let endY: Double
        let duration: TimeInterval
        let text: String
        let outputPath: String
    }

)swift";

const char outputDirectoryKeyPlaceholder[] = "@OUTPUT_DIRECTORY_KEY@";

const char uiTestBody[] = R"swift(
    override func setUpWithError() throws {
        continueAfterFailure = false
    }

    @MainActor
    func testReplaySteps() throws {
        // A replay that begins with a launch starts the app itself, with that
        // step's arguments; any other drives the app as it already runs.
        if steps.first?.kind != "launch" {
            app.activate()
            waitForForeground(timeout: 15)
            settle(0.65)
        }

        // Every step point counts from the top-left corner of the app's window.
        let origin = app.coordinate(withNormalizedOffset: CGVector(dx: 0, dy: 0))
        for step in steps {
            if step.kind != "launch" {
                waitForForeground(timeout: 8)
            }
            switch step.kind {
            case "launch":
                // launch() ends a running instance first, so every launch
                // starts from the app's first screen with these arguments.
                app.launchArguments = try JSONDecoder().decode([String].self, from: Data(step.text.utf8))
                app.launch()
                waitForForeground(timeout: 15)
                settle(step.duration)
            case "tap":
                point(origin, step.x, step.y).tap()
            case "swipe":
                point(origin, step.x, step.y).press(
                    forDuration: max(step.duration, 0.05),
                    thenDragTo: point(origin, step.endX, step.endY))
            case "type":
                app.typeText(step.text)
            case "wait":
                settle(step.duration)
            case "screenshot":
                settle(0.45)
                let url = screenshotURL(step.outputPath)
                try FileManager.default.createDirectory(
                    at: url.deletingLastPathComponent(), withIntermediateDirectories: true)
                try XCUIScreen.main.screenshot().pngRepresentation.write(to: url)
                recordProgress(step.outputPath)
            default:
                XCTFail("Unsupported step kind: \(step.kind)")
                return
            }
            if step.kind != "wait" && step.kind != "screenshot" && step.kind != "launch" {
                settle(0.3)
            }
        }
    }

    @MainActor
    private func waitForForeground(timeout: TimeInterval) {
        if app.state != .runningForeground {
            app.activate()
        }
        if !app.wait(for: .runningForeground, timeout: timeout) {
            XCTFail("Target app did not become foreground: \(app)")
        }
    }

    private func settle(_ seconds: TimeInterval) {
        RunLoop.current.run(until: Date().addingTimeInterval(max(seconds, 0)))
    }

    @MainActor
    private func point(_ origin: XCUICoordinate, _ x: Double, _ y: Double) -> XCUICoordinate {
        origin.withOffset(CGVector(dx: CGFloat(x), dy: CGFloat(y)))
    }

    // An absolute path wins; otherwise the output directory comes from the
    // environment, then from the marker file the runner writes before each run,
    // and last the test's own working directory.
    private func screenshotURL(_ rawPath: String) -> URL {
        if rawPath.hasPrefix("/") {
            return URL(fileURLWithPath: rawPath)
        }
        if let directory = ProcessInfo.processInfo.environment[@OUTPUT_DIRECTORY_KEY@], !directory.isEmpty {
            return URL(fileURLWithPath: directory, isDirectory: true).appendingPathComponent(rawPath)
        }
        if let saved = try? String(contentsOfFile: outputDirectoryFilePath, encoding: .utf8) {
            let directory = saved.trimmingCharacters(in: .whitespacesAndNewlines)
            if !directory.isEmpty {
                return URL(fileURLWithPath: directory, isDirectory: true).appendingPathComponent(rawPath)
            }
        }
        return URL(fileURLWithPath: rawPath)
    }

    // One line per finished screenshot; the runner polls this file. Progress
    // is a courtesy, so a failure to record it never fails the replay.
    private func recordProgress(_ outputPath: String) {
        guard !progressFilePath.isEmpty else { return }
        let line = Data((outputPath + "\n").utf8)
        if FileManager.default.fileExists(atPath: progressFilePath) {
            guard let handle = FileHandle(forWritingAtPath: progressFilePath) else { return }
            _ = try? handle.seekToEnd()
            try? handle.write(contentsOf: line)
            try? handle.close()
        } else {
            FileManager.default.createFile(atPath: progressFilePath, contents: line)
        }
    }
}
)swift";

} // namespace RunnerTemplates
