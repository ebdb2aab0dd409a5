"""mutations.py BUILD: makes one mistake at a time in the macOS back end and expects its tests to fail.

No source is touched: the changed copy is compiled beside the build by the build's own commands, and takes the place of
the unchanged object in the test program. A mistake that no test notices fails this script, and so does one whose place
in the source has gone, or a test program that fails without any mistake."""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent))
from changed_build import Build

POWER = "platform/macos/power"
SHELL = "platform/macos/shell"
MENUBAR = "platform/macos/menubar"

# (what goes wrong, file, right, wrong, test program, sources to compile where the file is a header)
MUTATIONS = [
    ("a service handle is not given back", f"{POWER}/io_object.h", "IOObjectRelease(m_handle);", ";",
     "macos_power_test", (f"{POWER}/io_object.cpp", f"{POWER}/io_kit_smc_service.cpp", f"{POWER}/io_kit_registry.cpp")),
    ("an object is not released", "platform/macos/foundation/cf_ref.h", "CFRelease(m_object);", ";",
     "macos_power_test", (f"{POWER}/io_object.cpp", f"{POWER}/io_kit_registry.cpp")),
    ("the matching dictionary is released twice", f"{POWER}/io_object.cpp", "matching.release()", "matching.get()",
     "macos_power_test"),
    ("a failed look-up is not noticed", f"{POWER}/io_object.cpp", "if (!matching)", "if (false)", "macos_power_test"),
    ("a found entry is not given back", f"{POWER}/io_kit_registry.cpp", "IOObjectRelease(entry);", ";",
     "macos_power_test"),
    ("the connection is not closed", f"{POWER}/io_kit_smc_service.cpp", "IOServiceClose(connection);", ";",
     "macos_power_test"),
    ("no handle is not closed", f"{POWER}/io_kit_smc_service.cpp", "IOServiceClose(connection);",
     "if (connection != 0) IOServiceClose(connection);", "macos_power_test"),
    ("the controller is asked by a wrong selector", f"{POWER}/io_kit_smc_service.cpp", "connection, selector, request",
     "connection, selector + 1, request", "macos_power_test"),
    ("the record is a byte short", f"{POWER}/io_kit_smc_service.cpp", "request.size(), reply", "request.size() - 1, reply",
     "macos_power_test"),
    ("a client of another type is opened", f"{POWER}/io_kit_smc_service.cpp", "kClientType = 0", "kClientType = 1",
     "macos_power_test"),
    ("a boolean is read as a number", f"{POWER}/io_kit_registry.cpp", "type == CFBooleanGetTypeID()", "false",
     "macos_power_test"),
    ("a fraction is dropped", f"{POWER}/io_kit_registry.cpp", "if (CFNumberIsFloatType(number))", "if (false)",
     "macos_power_test"),
    ("keys are taken for text unseen", f"{POWER}/io_kit_registry.cpp", "CFGetTypeID(key) != CFStringGetTypeID()",
     "false", "macos_power_test"),
    ("the notification is missed", "platform/macos/preferences/change_observer.mm",
     "name:NSUserDefaultsDidChangeNotification", "name:NSRunLoopCommonModes", "user_defaults_store_test"),
    ("other processes' changes are missed", "platform/macos/preferences/change_observer.mm",
     "[_defaults addObserver:self forKeyPath:key options:0 context:&kContext];", ";", "user_defaults_store_test"),
    ("observers stay behind", "platform/macos/preferences/change_observer.mm",
     "[NSNotificationCenter.defaultCenter removeObserver:self];", ";", "user_defaults_store_test"),
    ("changes are announced on any thread", "platform/macos/preferences/change_observer.mm",
     "if (!NSThread.isMainThread)", "if (false)", "user_defaults_store_test"),
    ("a boolean is stored as a number", "platform/macos/preferences/user_defaults_store.mm", "numberWithBool:flag",
     "numberWithInt:flag", "user_defaults_store_test"),
    ("two login item states are mixed up", "platform/macos/login/main_app_login_item.mm",
     "return LoginItemStatus::RequiresApproval;", "return LoginItemStatus::Enabled;", "main_app_login_item_test"),
    ("the menu stays attached after it has closed", f"{MENUBAR}/menu_bar_item.mm", "[this] { m_item.menu = nil; }",
     "[] { }", "menu_bar_item_test"),
    ("the menu stays attached where it never opened", f"{MENUBAR}/menu_bar_item.mm", "if (!m_menu->isOpen())",
     "if (false)", "menu_bar_item_test"),
    ("a selector that nobody has", f"{MENUBAR}/menu_bar_item.mm", "@selector(click:)", "@selector(clicked:)",
     "menu_bar_item_test"),
    ("the right button is not listened to", f"{MENUBAR}/menu_bar_item.mm", " | NSEventMaskRightMouseUp", "",
     "menu_bar_item_test"),
    ("left and right are mixed up", f"{MENUBAR}/menu_bar_item.mm", "type == NSEventTypeRightMouseUp",
     "type != NSEventTypeRightMouseUp", "menu_bar_item_test"),
    ("an old event counts as a right click", f"{MENUBAR}/menu_bar_item.mm", "event.timestamp < kLatestClick",
     "event.timestamp >= 0.0", "menu_bar_item_test"),
    ("the item's place is forgotten", f"{MENUBAR}/menu_bar_item.mm", "[defaults setObject:place forKey:kPlaceKey];",
     ";", "menu_bar_item_test"),
    ("the item stays in the menu bar", f"{MENUBAR}/menu_bar_item.mm",
     "[NSStatusBar.systemStatusBar removeStatusItem:m_item];", ";", "menu_bar_item_test"),
    ("ink goes into a colour", "platform/macos/drawing/alpha_bitmap.mm", "row[x * kBytesPerPixel + kAlpha] = mask",
     "row[x * kBytesPerPixel] = mask", "menu_bar_item_test"),
    ("a bitmap holds what was there before", "platform/macos/drawing/alpha_bitmap.mm", "std::memset(bytes, 0,",
     "static_cast<void>(", "menu_bar_item_test"),
    ("the image is no template", f"{MENUBAR}/template_image.mm", "[image setTemplate:YES];", ";", "menu_bar_item_test"),
    ("the system decides which entries are enabled", f"{MENUBAR}/native_menu.mm", "m_native.autoenablesItems = NO;",
     ";", "menu_bar_item_test"),
    ("an open menu does not follow", f"{MENUBAR}/native_menu.mm", "item.title = nsString(entry.title);", ";",
     "menu_bar_item_test"),
    ("the timer has no tolerance", f"{SHELL}/run_loop_timer.mm", "m_timer.tolerance = tolerance;", ";",
     "macos_shell_test"),
    ("a tick has no pool of its own", f"{SHELL}/run_loop_timer.mm", "@autoreleasepool {", "{", "macos_shell_test"),
    ("a timer outlives its object", f"{SHELL}/run_loop_timer.mm", "[m_timer invalidate];", ";", "macos_shell_test"),
    ("a log line is a format", f"{SHELL}/app_kit_desktop.mm", 'NSLog(@"%@", nsString(line));', "NSLog(nsString(line));",
     "macos_shell_test"),
    ("opening again is left to the system", f"{SHELL}/accessory_application.mm", "return NO;", "return YES;",
     "macos_shell_test"),
    ("the popover stays when the user clicks elsewhere", f"{SHELL}/popover_opening.mm",
     "NSPopoverBehaviorTransient", "NSPopoverBehaviorApplicationDefined", "native_popover_host_test"),
    ("the closing click opens again", f"{SHELL}/native_popover_host.mm",
     "m_closingClick.closedByPress(m_parts.clock());", ";", "native_popover_host_test"),
    ("a press elsewhere counts as one on the item", f"{SHELL}/native_popover_host.mm",
     "return NSPointInRect(NSEvent.mouseLocation, view.window.frame);", "return true;", "native_popover_host_test"),
    ("a closing without a press counts as a click", f"{SHELL}/native_popover_host.mm",
     "(NSEvent.pressedMouseButtons & kLeftButton) == 0", "false", "native_popover_host_test"),
    ("the content is shown before it is in a window", f"{SHELL}/popover_opening.mm",
     "m_popover.contentSize = size;", "m_popover.contentSize = size; m_content->show();", "native_popover_host_test"),
    ("content that is about to go is left behind", f"{SHELL}/popover_opening.mm", "    delete m_content;", "",
     "native_popover_host_test"),
    ("the content goes while it is still shown", f"{SHELL}/popover_opening.mm", "m_content->deleteLater();",
     "delete m_content;", "native_popover_host_test"),
    ("the content stays after the closing", f"{SHELL}/popover_opening.mm", "m_content->deleteLater();", ";",
     "native_popover_host_test"),
    ("frames go on after the end", "platform/macos/frames/display_link_frames.mm", "[m_link invalidate];", ";",
     "display_link_frames_test"),
    ("the Low Power Mode is not looked at", "platform/macos/frames/display_link_frames.mm",
     "NSProcessInfo.processInfo.lowPowerModeEnabled", "false", "display_link_frames_test"),
    ("displays are held back", "platform/macos/frames/display_link_frames.mm", "        if (sparesPower())\n            m_link",
     "            m_link", "display_link_frames_test"),
    ("a frame timer has no tolerance", "platform/macos/frames/display_link_frames.mm",
     "timer.tolerance = interval * kToleratedShare;", ";", "display_link_frames_test"),
    ("frames are made that nobody sees", "platform/macos/frames/display_link_frames.mm",
     "if ((window.occlusionState & NSWindowOcclusionStateVisible) != 0)", "", "display_link_frames_test"),
    ("frame timers go on after the end", "platform/macos/frames/display_link_frames.mm",
     "~TimerRun() override { [m_timer invalidate]; }", "~TimerRun() override { }", "display_link_frames_test"),
    ("changed display settings are missed", "platform/macos/accessibility/app_kit_display_settings.mm",
     "NSWorkspace.sharedWorkspace.notificationCenter", "NSNotificationCenter.defaultCenter", "app_kit_display_settings_test"),
    ("an observer of notifications stays behind", "platform/macos/foundation/notification_observer.mm",
     "[m_center removeObserver:m_target];", ";", "app_kit_display_settings_test"),
    ("the region's changes are missed", "platform/macos/locale/locale_watch.mm",
     "NSCurrentLocaleDidChangeNotification", "NSRunLoopCommonModes", "mac_program_test"),
    ("numbers stay as the region was", "render/macos/locale_decimals.mm", "NSLocale.autoupdatingCurrentLocale",
     "NSLocale.currentLocale", "render_macos_test"),
    ("a symbol's name is let go", "render/macos/system_symbols.mm",
     "return known != names.end() ? *known : *names.emplace(name).first;", "return name;", "render_macos_test"),
    ("motion and contrast are mixed up", "platform/macos/accessibility/app_kit_display_settings.mm",
     "accessibilityDisplayShouldReduceMotion", "accessibilityDisplayShouldIncreaseContrast", "app_kit_display_settings_test"),
    ("a line is not released", "platform/macos/foundation/cf_ref.h", "CFRelease(m_object);", ";", "render_macos_test",
     ("render/macos/font_file.mm",)),
]


def program_path(build, name):
    """Where a test program is, in the build's folder."""
    return next(path for path in build.folder.glob("tests/**/" + name) if path.is_file()).relative_to(build.folder)


def outcome(build, scratch, number, mutation):
    """What is wrong with the outcome of a mutation, or nothing."""
    _, file, right, wrong, program, *sources = mutation
    text = (build.root / file).read_text()
    if text.count(right) != 1:
        return f"{file} has {text.count(right)} places that read: {right}"
    text = text.replace(right, wrong)
    place = scratch / str(number)
    place.mkdir()
    objects = []
    include = None
    if sources:
        include = place / "include"
        header = include / file
        header.parent.mkdir(parents=True)
        header.write_text(text)
    for index, source in enumerate(sources[0] if sources else (file,)):
        target = place / f"{index}.o"
        # A source that is built more than once is built the same way.
        done = build.compile(min(build.objects[source]), target, None if sources else text, include)
        if done.returncode != 0:
            return f"it does not compile:\n{done.stderr}"
        objects.append(str(target))
    link = build.link_command(program_path(build, program))
    link[link.index("-o") + 1] = str(place / program)
    first = next(index for index, word in enumerate(link) if word.endswith(".a"))
    done = subprocess.run(link[:first] + objects + link[first:], cwd=build.folder, capture_output=True, text=True,
                          check=False)
    if done.returncode != 0:
        return f"it does not link:\n{done.stderr}"
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", UBSAN_OPTIONS="halt_on_error=1")
    done = subprocess.run([place / program, "--gtest_brief=1"], env=environment, capture_output=True, text=True,
                          timeout=120, check=False)
    (place / program).unlink()
    failures = re.findall(r"^\[  FAILED  \] (\S+) \(", done.stdout, re.M)
    if right == wrong:
        return f"fails unchanged: {failures}\n{done.stderr}" if done.returncode != 0 else None
    if done.returncode == 0 or not (failures or "ERROR" in done.stderr):
        return "no test notices"
    return None


def main():
    # One source of each program is built anew as it is, to see that the rest of this script works.
    unchanged = {mutation[4]: (mutation[1], *mutation[1:3], mutation[2], mutation[4]) for mutation in MUTATIONS
                 if len(mutation) == 5}
    mutations = MUTATIONS + list(unchanged.values())
    with tempfile.TemporaryDirectory() as scratch, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        build = Build(sys.argv[1], pathlib.Path.cwd())
        outcomes = list(pool.map(lambda item: outcome(build, pathlib.Path(scratch), *item), enumerate(mutations)))
    wrong = [(mutation[0], what) for mutation, what in zip(mutations, outcomes) if what]
    for name, what in wrong:
        print(f"mutations: {name}: {what}", file=sys.stderr)
    if wrong:
        sys.exit(f"mutations: {len(wrong)} of {len(mutations)} did not go as they should")
    print(f"mutations: {len(MUTATIONS)} made, all noticed")


main()
