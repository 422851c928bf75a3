"""Stands in for the services of a desktop on the bus of the session, and writes a line of JSON for all
that a program asks of them: notifications, the progress in the task bar, and locks against sleep. The
desktop prefers dark windows until a signal USR1.

  desktop_services.py FILE
"""
import json
import os
import signal
import sys

from gi.repository import Gio, GLib

NOTIFICATIONS = """<node><interface name="org.freedesktop.Notifications"><method name="Notify">
<arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
<arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
<arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
</method></interface></node>"""
LOGIN = """<node><interface name="org.freedesktop.login1.Manager"><method name="Inhibit">
<arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
<arg type="s" direction="in"/><arg type="h" direction="out"/></method></interface></node>"""
PORTAL = """<node><interface name="org.freedesktop.portal.Settings"><method name="Read">
<arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
<signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal></interface></node>"""
PORTAL_PATH = "/org/freedesktop/portal/desktop"
DARK, LIGHT = 1, 2


class Services:
    def __init__(self, log):
        self.log = log
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.scheme = DARK
        self.awaited = 0
        self.offer("org.freedesktop.Notifications", "/org/freedesktop/Notifications", NOTIFICATIONS, self.notify)
        self.offer("org.freedesktop.login1", "/org/freedesktop/login1", LOGIN, self.inhibit)
        self.offer("org.freedesktop.portal.Desktop", PORTAL_PATH, PORTAL, self.read_setting)
        self.bus.signal_subscribe(None, "com.canonical.Unity.LauncherEntry", "Update", None, None,
                                  Gio.DBusSignalFlags.NONE, self.progress)

    def offer(self, name, path, description, method):
        interface = Gio.DBusNodeInfo.new_for_xml(description).interfaces[0]
        self.bus.register_object(path, interface, lambda *call: method(call[5].unpack(), call[6]), None, None)
        self.awaited += 1
        Gio.bus_own_name_on_connection(self.bus, name, Gio.BusNameOwnerFlags.NONE, self.named, None)

    def named(self, *_):
        self.awaited -= 1
        if self.awaited == 0:
            self.note("ready")

    def note(self, what, **facts):
        self.log.write(json.dumps({"what": what, **facts}) + "\n")
        self.log.flush()

    def notify(self, values, call):
        _, _, icon, title, text, _, hints, _ = values
        self.note("notification", icon=icon, title=title, text=text, entry=hints.get("desktop-entry"))
        call.return_value(GLib.Variant("(u)", (1,)))

    def inhibit(self, values, call):
        what, who, why, mode = values
        self.note("lock", things=what, who=who, why=why, mode=mode)
        reading, writing = os.pipe()
        files = Gio.UnixFDList.new()
        call.return_value_with_unix_fd_list(GLib.Variant("(h)", (files.append(writing),)), files)
        os.close(writing)
        # The end of the pipe is reached when the last holder of the lock has closed it.
        GLib.io_add_watch(reading, GLib.PRIORITY_DEFAULT, GLib.IO_HUP, self.unlock)

    def unlock(self, reading, _):
        os.close(reading)
        self.note("unlock")
        return False

    def read_setting(self, _, call):
        # Twice wrapped, as the portal does.
        call.return_value(GLib.Variant("(v)", (GLib.Variant("v", GLib.Variant("u", self.scheme)),)))

    def prefer_light(self):
        self.scheme = LIGHT
        value = GLib.Variant("(ssv)", ("org.freedesktop.appearance", "color-scheme", GLib.Variant("u", LIGHT)))
        self.bus.emit_signal(None, PORTAL_PATH, "org.freedesktop.portal.Settings", "SettingChanged", value)
        return True

    def progress(self, _bus, _sender, _path, _interface, _signal, values):
        entry, facts = values.unpack()
        self.note("progress", entry=entry, share=facts["progress"], is_visible=facts["progress-visible"])


def main():
    with open(sys.argv[1], "w", encoding="utf-8") as log:
        services = Services(log)
        GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, services.prefer_light)
        GLib.MainLoop().run()


if __name__ == "__main__":
    main()
