#!/usr/bin/env python3
"""Only platform calls the system: symbols.py LIBRARY… | symbols.py --self-test LIBRARY-OF-PLATFORM

Asks `nm` what each library of a floor wants from others: no call of the system that touches files,
processes or the environment, no stream on a file, and of std::filesystem nothing but paths as text.
"""

import pathlib
import re
import subprocess
import sys

# Not `syscall`: the library's own atomics wait with it.
SYSTEM = """
    open openat creat close read readv pread preadv write writev pwrite pwritev lseek sendfile
    copy_file_range splice stat fstat lstat fstatat statx statvfs fstatvfs statfs fstatfs access
    faccessat euidaccess eaccess unlink unlinkat remove rename renameat renameat2 link linkat symlink
    symlinkat readlink readlinkat realpath canonicalize_file_name mkdir mkdirat rmdir chmod fchmod
    fchmodat chown fchown lchown fchownat utime utimes futimes futimens utimensat truncate ftruncate
    fallocate posix_fallocate fsync fdatasync sync syncfs opendir fdopendir readdir closedir scandir
    nftw ftw glob chdir fchdir getcwd chroot mount umount umask mknod mkfifo mkstemp mkostemp mkdtemp
    tmpfile tmpnam fopen freopen fdopen popen pclose system fork vfork clone execv execve execvp
    execvpe execl execle execlp fexecve posix_spawn posix_spawnp wait waitpid waitid wait4 kill killpg
    signal sigaction sigprocmask pthread_sigmask signalfd pipe pipe2 dup dup2 dup3 fcntl ioctl
    flock lockf poll ppoll select pselect epoll_create1 epoll_wait inotify_init1 mmap munmap shm_open
    socket connect bind accept getenv secure_getenv setenv unsetenv putenv isatty tcgetattr tcsetattr
    getpid getppid getuid geteuid getpwuid getpwuid_r getpwnam setsid setpgid prctl dlopen
    gethostname uname sysconf setmntent getmntent""".split()
# The library's checked and wide forms: open64, __open_2, __read_chk, __xstat64.
CALL = re.compile(r"(?:__)?(?:x(?=stat))?(?:" + "|".join(SYSTEM) + r")(?:64)?(?:_2|_chk)?(?:@.*)?$")
FILES = re.compile(r"std::(?:filesystem::(?!__cxx11::path::|__cxx11::filesystem_error)"
                   r"|basic_(?:filebuf|[io]?fstream)\b)")


def faults(listing):
    """`listing`: what `nm -A -C --undefined-only` prints of libraries."""
    for line in listing.splitlines():
        row = re.match(r"(?:.*/)?lib(?:kestrova_)?(\w+)\.a:([^:]+):\s+[Uw] (.*)$", line)
        if row and (CALL.match(row.group(3)) or FILES.match(row.group(3))):
            yield f"{row.group(1)}: {row.group(2)} calls {row.group(3)}"


def listing_of(libraries):
    return subprocess.run(["nm", "-A", "-C", "--undefined-only", *libraries],
                          capture_output=True, text=True, check=True).stdout


def self_test(platform):
    row = "build/src/libkestrova_core.a:files.cpp.o:                 U "
    for bad in ("open", "open64", "unlink", "__xstat64", "fork", "__realpath_chk", "getenv", "rename",
                "std::filesystem::status(std::filesystem::__cxx11::path const&)",
                "std::filesystem::__cxx11::directory_iterator::operator++()",
                "std::basic_ofstream<char, std::char_traits<char> >::~basic_ofstream()"):
        assert list(faults(row + bad)) == [f"core: files.cpp.o calls {bad}"], bad
    for good in ("memcpy", "kestrova::platform::Unlink(std::filesystem::__cxx11::path const&)",
                 "std::filesystem::__cxx11::path::parent_path() const", "opening", "reads",
                 "kestrova::FileExists(std::filesystem::__cxx11::path const&)", "iconv_open"):
        assert not list(faults(row + good)), good
    assert any(" calls open" in fault for fault in faults(listing_of([platform])))


if sys.argv[1] == "--self-test":
    self_test(pathlib.Path(sys.argv[2]))
else:
    found = sorted(set(faults(listing_of(sys.argv[1:]))))
    print("\n".join(found))
    sys.exit(1 if found else 0)
