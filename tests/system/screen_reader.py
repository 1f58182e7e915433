"""A client of the accessibility bus: what a screen reader is told about the program, and what it can do."""

import contextlib
import importlib
import os
import time

from harness import SessionBus, undone_by, wait_for

# Everything that the program tells by itself and that a reader may say aloud.
TOLD = ["object:property-change:accessible-name", "object:property-change:accessible-description",
        "object:property-change:accessible-value", "object:property-change:accessible-role",
        "object:text-changed", "object:state-changed:showing", "object:children-changed"]


class ScreenReader:
    """A session bus of its own for a display, the accessibility bus behind it, and a listener there. To be
    made once in a process, before the display's first program."""

    def __init__(self, display):
        self.bus = SessionBus(display.environment)
        with undone_by(self.stop):
            self._listen(display)

    def _listen(self, display):
        address = self.bus.address
        display.environment |= {"DBUS_SESSION_BUS_ADDRESS": address, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        os.environ |= {"DISPLAY": display.name, "DBUS_SESSION_BUS_ADDRESS": address,
                       "XDG_RUNTIME_DIR": display.runtime}
        self.atspi = importlib.import_module("pyatspi")  # connects at once, by the environment
        glib = importlib.import_module("gi.repository.GLib")
        self.loop = glib.MainContext.default()
        self.gone = glib.GError
        self.heard = []
        self.atspi.Registry.registerEventListener(self._hear, *TOLD)

    def stop(self):
        self.bus.stop()

    def _hear(self, event):
        # A window that was closed meanwhile answers nothing more.
        with contextlib.suppress(self.gone):
            self.heard.append((str(event.type), event.source.getRoleName(), event.source.name))

    def listen(self, seconds):
        """What is told meanwhile: kind, role and name."""
        self.heard = []
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            while self.loop.iteration(False):
                pass
            time.sleep(0.005)
        return self.heard

    def listen_for(self, wanted, seconds=5.0):
        """The same until something wanted is told."""
        heard = []

        def found():
            heard.extend(self.listen(0.05))
            return any(wanted(*event) for event in heard)

        wait_for(found, seconds, "something to hear")
        return heard

    def program(self, pid):
        def started():
            for application in self.atspi.Registry.getDesktop(0):
                if application is not None and application.get_process_id() == pid:
                    return application
            return None

        return wait_for(started, what="the program on the accessibility bus")

    def showing(self, node):
        return node.getState().contains(self.atspi.STATE_SHOWING)

    def below(self, node, with_hidden=False, leave_out=None):
        """What is shown below a node; not what stands inside of a role that is left out."""
        for child in node:
            if child is None or not (with_hidden or self.showing(child)):
                continue
            yield child
            if child.getRoleName() != leave_out:
                yield from self.below(child, with_hidden, leave_out)

    def find(self, root, role, name, with_hidden=False):
        """The control of this role whose name begins so; none if there is none."""
        for node in self.below(root, with_hidden):
            if node.getRoleName() == role and node.name.startswith(name):
                return node
        return None

    def wait_for(self, root, role, name):
        return wait_for(lambda: self.find(root, role, name), what=f"{role} {name!r}")

    def actions(self, node):
        try:
            action = node.queryAction()
        except NotImplementedError:
            return []
        return [action.getName(index) for index in range(action.nActions)]

    def press(self, node):
        node.queryAction().doAction(self.actions(node).index("Press"))

    def text(self, node):
        return node.queryText().getText(0, -1)
