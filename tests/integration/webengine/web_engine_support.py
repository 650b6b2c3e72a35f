"""What the tests of web views share: how their hosts are started, and what is loaded in them."""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "loading"))

from loading_support import BUILD, PRELOADED, environment  # noqa: E402

TARNIX = BUILD / "bin/tarnix"
PART = "libtarnixprobe-qt6-webengine.so"
# A machine that is busy with other things takes long to start the engine.
PATIENCE_WITH_PAGES = 120.0


def host_environment(home, with_probe):
    return environment(
        PRELOADED if with_probe else None, HOME=home, XDG_RUNTIME_DIR=home, TMPDIR=home,
        QT_QUICK_BACKEND="software", QTWEBENGINE_DISABLE_SANDBOX="1",
        QTWEBENGINE_CHROMIUM_FLAGS="--disable-gpu --disable-background-networking "
        "--disable-component-update "
        '--host-resolver-rules="MAP * ~NOTFOUND , EXCLUDE 127.0.0.1 , EXCLUDE localhost"')


def maps_of(pid):
    return pathlib.Path(f"/proc/{pid}/maps").read_text()
