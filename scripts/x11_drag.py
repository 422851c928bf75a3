"""Drops a file on a window of X11, as a file manager does (the XDND protocol, version 5)."""
import pathlib
import sys
import time

import Xlib.display
from Xlib import X, Xatom
from Xlib.protocol import event

PATIENCE = 10  # seconds
VERSION = 5


class Drag:
    def __init__(self, display_name, path):
        self.display = Xlib.display.Display(display_name)
        self.root = self.display.screen().root
        self.source = self.root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self.data = (pathlib.Path(path).as_uri() + "\r\n").encode()

    def atom(self, name):
        return self.display.intern_atom(name)

    def target_at(self, x, y):
        """Returns the deepest window at a point that takes drops; its program has marked it."""
        window, found = self.root, None
        while True:
            window = self.root.translate_coords(window, 0, 0) and window
            place = window.translate_coords(self.root, x, y)
            child = place.child
            if child == X.NONE:
                return found
            window = child
            if window.get_full_property(self.atom("XdndAware"), Xatom.ATOM):
                found = window

    def send(self, target, kind, *values):
        data = [self.source.id, *values] + [0] * (4 - len(values))
        target.send_event(event.ClientMessage(window=target, client_type=self.atom(kind), data=(32, data)))
        self.display.flush()

    def await_message(self, kind):
        """Answers requests for the data until a message of that kind comes, and returns its values."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if not self.display.pending_events():
                time.sleep(0.01)
                continue
            received = self.display.next_event()
            if received.type == X.SelectionRequest:
                self.give(received)
            elif received.type == X.ClientMessage and received.client_type == self.atom(kind):
                return received.data[1]
        sys.exit(f"the window sent no {kind}")

    def give(self, request):
        kind = self.atom("text/uri-list")
        if request.target == self.atom("TARGETS"):
            request.requestor.change_property(request.property, Xatom.ATOM, 32, [kind])
        else:
            request.requestor.change_property(request.property, kind, 8, self.data)
        request.requestor.send_event(event.SelectionNotify(
            time=request.time, requestor=request.requestor, selection=request.selection,
            target=request.target, property=request.property))
        self.display.flush()

    def drop_at(self, x, y):
        target = self.target_at(x, y)
        if target is None:
            sys.exit("no window takes drops there")
        self.source.set_selection_owner(self.atom("XdndSelection"), X.CurrentTime)
        self.send(target, "XdndEnter", VERSION << 24, self.atom("text/uri-list"))
        self.send(target, "XdndPosition", 0, x << 16 | y, X.CurrentTime, self.atom("XdndActionCopy"))
        accepted = self.await_message("XdndStatus")[1] & 1
        if not accepted:
            sys.exit("the window does not take the folder")
        self.send(target, "XdndDrop", 0, X.CurrentTime)
        self.await_message("XdndFinished")
        self.display.close()


def drop(display_name, path, x, y):
    """Drops a file or folder at a point of the screen. Ends the script if the window refuses it."""
    Drag(display_name, path).drop_at(x, y)
