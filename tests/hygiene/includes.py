"""Checks of what includes what. Each takes a tree and yields its findings."""

import re

FLOORS = {"basics": 0, "controls": 1, "platform": 2, "link": 3, "widgets": 3, "settings": 4, "displays": 5,
          "gateway": 5, "logging": 6, "dialogs": 7, "xlg": 7, "app": 8,
          "view": 8}

QT = re.compile(r"([Qq][A-Za-z]|ui_|moc_)")
DESKTOP = re.compile(r"src/(platform/desktop/.*|widgets/.*|view/.*|(.*/)?[^/]*_view\.(h|cpp)|app/main\.cpp)")

STANDARD = set("""
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
    cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine
    csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque
    exception execution filesystem format forward_list fstream functional future initializer_list
    iomanip ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource
    mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator
    semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string
    string_view strstream syncstream system_error thread tuple type_traits typeindex typeinfo
    unordered_map unordered_set utility valarray variant vector version
    """.split())


def core_sources(tree):
    """The sources of the target tyxo_core. Failure: there is no such target."""
    listing = re.search(r"add_library\(\s*tyxo_core\s([^)]*)\)", tree.text("src/CMakeLists.txt"))
    return [f"src/{word}" for word in listing[1].split() if word.endswith((".cpp", ".h"))]


def core_files(tree):
    """The core's sources and every header that they reach."""
    reached, ahead = set(), core_sources(tree)
    while ahead:
        path = ahead.pop()
        if path not in reached and path in tree.file_set:
            reached.add(path)
            ahead += [header for _, header in tree.included(path)]
    return sorted(reached)


def no_qt_in_core(tree):
    for path in core_files(tree):
        if DESKTOP.fullmatch(path):
            yield f"{path}: the core reaches this file of the desktop"
        for number, _, name in tree.includes(path):
            if QT.match(name):
                yield f"{path}:{number}: the core includes {name}"


def core_uses_the_standard_library_only(tree):
    for path in core_files(tree):
        for number, kind, name in tree.includes(path):
            if kind == "<" and name not in STANDARD and not QT.match(name):
                yield f"{path}:{number}: {name} is no header of the standard library"


def desktop_files_are_known_by_name(tree):
    """Whoever looks for Qt needs the name only."""
    for path in tree.under("src"):
        for number, _, name in tree.includes(path):
            if QT.match(name) and not DESKTOP.fullmatch(path):
                yield f"{path}:{number}: includes {name}, and its name is none of the desktop's"
                break


def every_source_is_built(tree):
    built = set(re.findall(r"[\w./]+\.cpp", tree.text("src/CMakeLists.txt")))
    for path in tree.under("src", suffixes=(".cpp",)):
        if path.removeprefix("src/") not in built:
            yield f"{path}: is in no target"


def no_include_cycle(tree):
    done, findings = set(), []

    def visit(path, way):
        if path in way:
            findings.append(" -> ".join(way[way.index(path):] + [path]))
        elif path not in done:
            for _, header in tree.included(path):
                visit(header, way + [path])
            done.add(path)

    for path in tree.under("src", "tools", "tests", "bench"):
        visit(path, [])
    yield from findings


def floor_of(path):
    parts = path.split("/")
    return FLOORS.get(parts[1]) if parts[0] == "src" and len(parts) > 2 else None


def includes_point_downwards(tree):
    for path in tree.under("src"):
        if floor_of(path) is None:
            yield f"{path}: is on no floor"
            continue
        for number, header in tree.included(path):
            above = floor_of(header)
            same_floor = path.split("/")[1] == header.split("/")[1]
            if above is None or above > floor_of(path) or (above == floor_of(path) and not same_floor):
                yield f"{path}:{number}: {header} is not on a floor below"
