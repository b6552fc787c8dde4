#include "refhost/emit/library_names.h"

#include <cctype>

namespace refhost {
namespace {

// Macros without parameters, as gcc, clang and their C++ compilers define them on Linux by default
// (-dM -E) for all headers of C11. Left out are those that CNames renames anyway, the formats of
// <inttypes.h> (isFormat), what <math.h> defines for _Float32 and its like, and `I` of <complex.h>,
// which so many programs have as a variable.
constexpr std::string_view kMacros = R"(
ADJ_ESTERROR ADJ_FREQUENCY ADJ_MAXERROR ADJ_MICRO ADJ_NANO ADJ_OFFSET ADJ_OFFSET_SINGLESHOT
ADJ_OFFSET_SS_READ ADJ_SETOFFSET ADJ_STATUS ADJ_TAI ADJ_TICK ADJ_TIMECONST AIO_PRIO_DELTA_MAX
ATOMIC_BOOL_LOCK_FREE ATOMIC_CHAR16_T_LOCK_FREE ATOMIC_CHAR32_T_LOCK_FREE ATOMIC_CHAR_LOCK_FREE
ATOMIC_FLAG_INIT ATOMIC_INT_LOCK_FREE ATOMIC_LLONG_LOCK_FREE ATOMIC_LONG_LOCK_FREE
ATOMIC_POINTER_LOCK_FREE ATOMIC_SHORT_LOCK_FREE ATOMIC_WCHAR_T_LOCK_FREE BC_BASE_MAX BC_DIM_MAX
BC_SCALE_MAX BC_STRING_MAX BIG_ENDIAN BOOL_MAX BOOL_WIDTH BUFSIZ BUS_ADRALN BUS_ADRERR
BUS_MCEERR_AO BUS_MCEERR_AR BUS_OBJERR BYTE_ORDER CHARCLASS_NAME_MAX CHAR_BIT CHAR_MAX CHAR_MIN
CHAR_WIDTH CLD_CONTINUED CLD_DUMPED CLD_EXITED CLD_KILLED CLD_STOPPED CLD_TRAPPED CLOCKS_PER_SEC
CLOCK_BOOTTIME CLOCK_BOOTTIME_ALARM CLOCK_MONOTONIC CLOCK_MONOTONIC_COARSE CLOCK_MONOTONIC_RAW
CLOCK_PROCESS_CPUTIME_ID CLOCK_REALTIME CLOCK_REALTIME_ALARM CLOCK_REALTIME_COARSE CLOCK_TAI
CLOCK_THREAD_CPUTIME_ID CLONE_CHILD_CLEARTID CLONE_CHILD_SETTID CLONE_DETACHED CLONE_FILES CLONE_FS
CLONE_IO CLONE_NEWCGROUP CLONE_NEWIPC CLONE_NEWNET CLONE_NEWNS CLONE_NEWPID CLONE_NEWTIME
CLONE_NEWUSER CLONE_NEWUTS CLONE_PARENT CLONE_PARENT_SETTID CLONE_PIDFD CLONE_PTRACE CLONE_SETTLS
CLONE_SIGHAND CLONE_SYSVSEM CLONE_THREAD CLONE_UNTRACED CLONE_VFORK CLONE_VM CLOSE_RANGE_CLOEXEC
CLOSE_RANGE_UNSHARE COLL_WEIGHTS_MAX CPU_SETSIZE CSIGNAL DBL_DECIMAL_DIG DBL_DIG DBL_EPSILON
DBL_HAS_SUBNORM DBL_MANT_DIG DBL_MAX DBL_MAX_10_EXP DBL_MAX_EXP DBL_MIN DBL_MIN_10_EXP DBL_MIN_EXP
DBL_TRUE_MIN DECIMAL_DIG DELAYTIMER_MAX E2BIG EACCES EADDRINUSE EADDRNOTAVAIL EADV EAFNOSUPPORT
EAGAIN EALREADY EBADE EBADF EBADFD EBADMSG EBADR EBADRQC EBADSLT EBFONT EBUSY ECANCELED ECHILD
ECHRNG ECOMM ECONNABORTED ECONNREFUSED ECONNRESET EDEADLK EDEADLOCK EDESTADDRREQ EDOM EDOTDOT
EDQUOT EEXIST EFAULT EFBIG EHOSTDOWN EHOSTUNREACH EHWPOISON EIDRM EILSEQ EINPROGRESS EINTR EINVAL
EIO EISCONN EISDIR EISNAM EKEYEXPIRED EKEYREJECTED EKEYREVOKED EL2HLT EL2NSYNC EL3HLT EL3RST
ELIBACC ELIBBAD ELIBEXEC ELIBMAX ELIBSCN ELNRNG ELOOP EMEDIUMTYPE EMFILE EMLINK EMSGSIZE EMULTIHOP
ENAMETOOLONG ENAVAIL ENETDOWN ENETRESET ENETUNREACH ENFILE ENOANO ENOBUFS ENOCSI ENODATA ENODEV
ENOENT ENOEXEC ENOKEY ENOLCK ENOLINK ENOMEDIUM ENOMEM ENOMSG ENONET ENOPKG ENOPROTOOPT ENOSPC ENOSR
ENOSTR ENOSYS ENOTBLK ENOTCONN ENOTDIR ENOTEMPTY ENOTNAM ENOTRECOVERABLE ENOTSOCK ENOTSUP ENOTTY
ENOTUNIQ ENXIO EOF EOPNOTSUPP EOVERFLOW EOWNERDEAD EPERM EPFNOSUPPORT EPIPE EPROTO EPROTONOSUPPORT
EPROTOTYPE ERANGE EREMCHG EREMOTE EREMOTEIO ERESTART ERFKILL EROFS ESHUTDOWN ESOCKTNOSUPPORT ESPIPE
ESRCH ESRMNT ESTALE ESTRPIPE ETIME ETIMEDOUT ETOOMANYREFS ETXTBSY EUCLEAN EUNATCH EUSERS
EWOULDBLOCK EXDEV EXFULL EXIT_FAILURE EXIT_SUCCESS EXPR_NEST_MAX FD_SETSIZE FE_ALL_EXCEPT
FE_DFL_ENV FE_DFL_MODE FE_DIVBYZERO FE_DOWNWARD FE_INEXACT FE_INVALID FE_NOMASK_ENV FE_OVERFLOW
FE_TONEAREST FE_TOWARDZERO FE_UNDERFLOW FE_UPWARD FILENAME_MAX FLT_DECIMAL_DIG FLT_DIG FLT_EPSILON
FLT_EVAL_METHOD FLT_HAS_SUBNORM FLT_MANT_DIG FLT_MAX FLT_MAX_10_EXP FLT_MAX_EXP FLT_MIN
FLT_MIN_10_EXP FLT_MIN_EXP FLT_RADIX FLT_ROUNDS FLT_TRUE_MIN FOPEN_MAX FPE_CONDTRAP FPE_FLTDIV
FPE_FLTINV FPE_FLTOVF FPE_FLTRES FPE_FLTSUB FPE_FLTUND FPE_FLTUNK FPE_INTDIV FPE_INTOVF FP_ILOGB0
FP_ILOGBNAN FP_INFINITE FP_INT_DOWNWARD FP_INT_TONEAREST FP_INT_TONEARESTFROMZERO FP_INT_TOWARDZERO
FP_INT_UPWARD FP_LLOGB0 FP_LLOGBNAN FP_NAN FP_NORMAL FP_SUBNORMAL FP_XSTATE_MAGIC1 FP_XSTATE_MAGIC2
FP_XSTATE_MAGIC2_SIZE FP_ZERO F_LOCK F_OK F_TEST F_TLOCK F_ULOCK HOST_NAME_MAX HUGE_VAL HUGE_VALF
HUGE_VALL ILL_BADIADDR ILL_BADSTK ILL_COPROC ILL_ILLADR ILL_ILLOPC ILL_ILLOPN ILL_ILLTRP ILL_PRVOPC
ILL_PRVREG INFINITY INT16_WIDTH INT32_WIDTH INT64_WIDTH INT8_WIDTH INTMAX_WIDTH INTPTR_WIDTH
INT_FAST16_WIDTH INT_FAST32_WIDTH INT_FAST64_WIDTH INT_FAST8_WIDTH INT_LEAST16_WIDTH
INT_LEAST32_WIDTH INT_LEAST64_WIDTH INT_LEAST8_WIDTH INT_WIDTH IOV_MAX LC_ADDRESS LC_ADDRESS_MASK
LC_ALL LC_ALL_MASK LC_COLLATE LC_COLLATE_MASK LC_CTYPE LC_CTYPE_MASK LC_GLOBAL_LOCALE
LC_IDENTIFICATION LC_IDENTIFICATION_MASK LC_MEASUREMENT LC_MEASUREMENT_MASK LC_MESSAGES
LC_MESSAGES_MASK LC_MONETARY LC_MONETARY_MASK LC_NAME LC_NAME_MASK LC_NUMERIC LC_NUMERIC_MASK
LC_PAPER LC_PAPER_MASK LC_TELEPHONE LC_TELEPHONE_MASK LC_TIME LC_TIME_MASK LDBL_DECIMAL_DIG
LDBL_DIG LDBL_EPSILON LDBL_HAS_SUBNORM LDBL_MANT_DIG LDBL_MAX LDBL_MAX_10_EXP LDBL_MAX_EXP LDBL_MIN
LDBL_MIN_10_EXP LDBL_MIN_EXP LDBL_TRUE_MIN LINE_MAX LITTLE_ENDIAN LLONG_MAX LLONG_MIN LLONG_WIDTH
LOGIN_NAME_MAX LONG_BIT LONG_LONG_MAX LONG_LONG_MIN LONG_MAX LONG_MIN LONG_WIDTH L_INCR L_SET
L_XTND L_ctermid L_cuserid L_tmpnam MATH_ERREXCEPT MATH_ERRNO MAXFLOAT MAX_CANON MAX_INPUT
MB_CUR_MAX MB_LEN_MAX MINSIGSTKSZ MOD_CLKA MOD_CLKB MOD_ESTERROR MOD_FREQUENCY MOD_MAXERROR
MOD_MICRO MOD_NANO MOD_OFFSET MOD_STATUS MOD_TAI MOD_TIMECONST MQ_PRIO_MAX M_1_PI M_1_PIf M_1_PIl
M_2_PI M_2_PIf M_2_PIl M_2_SQRTPI M_2_SQRTPIf M_2_SQRTPIl M_E M_Ef M_El M_LN10 M_LN10f M_LN10l
M_LN2 M_LN2f M_LN2l M_LOG10E M_LOG10Ef M_LOG10El M_LOG2E M_LOG2Ef M_LOG2El M_PI M_PI_2 M_PI_2f
M_PI_2l M_PI_4 M_PI_4f M_PI_4l M_PIf M_PIl M_SQRT1_2 M_SQRT1_2f M_SQRT1_2l M_SQRT2 M_SQRT2f
M_SQRT2l NAME_MAX NAN NFDBITS NGREG NGROUPS_MAX NL_ARGMAX NL_LANGMAX NL_MSGMAX NL_NMAX NL_SETMAX
NL_TEXTMAX NSIG NZERO ONCE_FLAG_INIT PATH_MAX PDP_ENDIAN PIPE_BUF POLL_ERR POLL_HUP POLL_IN
POLL_MSG POLL_OUT POLL_PRI PTHREAD_ADAPTIVE_MUTEX_INITIALIZER_NP PTHREAD_ATTR_NO_SIGMASK_NP
PTHREAD_BARRIER_SERIAL_THREAD PTHREAD_CANCELED PTHREAD_CANCEL_ASYNCHRONOUS PTHREAD_CANCEL_DEFERRED
PTHREAD_CANCEL_DISABLE PTHREAD_CANCEL_ENABLE PTHREAD_COND_INITIALIZER PTHREAD_CREATE_DETACHED
PTHREAD_CREATE_JOINABLE PTHREAD_DESTRUCTOR_ITERATIONS PTHREAD_ERRORCHECK_MUTEX_INITIALIZER_NP
PTHREAD_EXPLICIT_SCHED PTHREAD_INHERIT_SCHED PTHREAD_KEYS_MAX PTHREAD_MUTEX_INITIALIZER
PTHREAD_ONCE_INIT PTHREAD_PROCESS_PRIVATE PTHREAD_PROCESS_SHARED
PTHREAD_RECURSIVE_MUTEX_INITIALIZER_NP PTHREAD_RWLOCK_INITIALIZER
PTHREAD_RWLOCK_WRITER_NONRECURSIVE_INITIALIZER_NP PTHREAD_SCOPE_PROCESS PTHREAD_SCOPE_SYSTEM
PTHREAD_STACK_MIN PTRDIFF_WIDTH P_tmpdir RAND_MAX REG_CR2 REG_CSGSFS REG_EFL REG_ERR REG_OLDMASK
REG_R10 REG_R11 REG_R12 REG_R13 REG_R14 REG_R15 REG_R8 REG_R9 REG_RAX REG_RBP REG_RBX REG_RCX
REG_RDI REG_RDX REG_RIP REG_RSI REG_RSP REG_TRAPNO RENAME_EXCHANGE RENAME_NOREPLACE RENAME_WHITEOUT
RE_DUP_MAX RTSIG_MAX R_OK SA_INTERRUPT SA_NOCLDSTOP SA_NOCLDWAIT SA_NODEFER SA_NOMASK SA_ONESHOT
SA_ONSTACK SA_RESETHAND SA_RESTART SA_SIGINFO SA_STACK SCHAR_MAX SCHAR_MIN SCHAR_WIDTH SCHED_BATCH
SCHED_DEADLINE SCHED_FIFO SCHED_IDLE SCHED_ISO SCHED_OTHER SCHED_RESET_ON_FORK SCHED_RR SEEK_CUR
SEEK_DATA SEEK_END SEEK_HOLE SEEK_SET SEGV_ACCADI SEGV_ACCERR SEGV_ADIDERR SEGV_ADIPERR SEGV_BNDERR
SEGV_MAPERR SEGV_MTEAERR SEGV_MTESERR SEGV_PKUERR SEM_VALUE_MAX SHRT_MAX SHRT_MIN SHRT_WIDTH
SIGABRT SIGALRM SIGBUS SIGCHLD SIGCLD SIGCONT SIGEV_NONE SIGEV_SIGNAL SIGEV_THREAD SIGEV_THREAD_ID
SIGFPE SIGHUP SIGILL SIGINT SIGIO SIGIOT SIGKILL SIGPIPE SIGPOLL SIGPROF SIGPWR SIGQUIT SIGRTMAX
SIGRTMIN SIGSEGV SIGSTKFLT SIGSTKSZ SIGSTOP SIGSYS SIGTERM SIGTRAP SIGTSTP SIGTTIN SIGTTOU SIGURG
SIGUSR1 SIGUSR2 SIGVTALRM SIGWINCH SIGXCPU SIGXFSZ SIG_ATOMIC_WIDTH SIG_BLOCK SIG_DFL SIG_ERR
SIG_HOLD SIG_IGN SIG_SETMASK SIG_UNBLOCK SIZE_WIDTH SI_ASYNCIO SI_ASYNCNL SI_DETHREAD SI_KERNEL
SI_MESGQ SI_QUEUE SI_SIGIO SI_TIMER SI_TKILL SI_USER SNAN SNANF SNANL SSIZE_MAX SS_DISABLE
SS_ONSTACK STA_CLK STA_CLOCKERR STA_DEL STA_FLL STA_FREQHOLD STA_INS STA_MODE STA_NANO STA_PLL
STA_PPSERROR STA_PPSFREQ STA_PPSJITTER STA_PPSSIGNAL STA_PPSTIME STA_PPSWANDER STA_RONLY STA_UNSYNC
STDERR_FILENO STDIN_FILENO STDOUT_FILENO TIMER_ABSTIME TIME_UTC TMP_MAX TRAP_BRANCH TRAP_BRKPT
TRAP_HWBKPT TRAP_TRACE TRAP_UNK TSS_DTOR_ITERATIONS TTY_NAME_MAX UCHAR_MAX UCHAR_WIDTH UINT16_WIDTH
UINT32_WIDTH UINT64_WIDTH UINT8_WIDTH UINTMAX_WIDTH UINTPTR_WIDTH UINT_FAST16_WIDTH
UINT_FAST32_WIDTH UINT_FAST64_WIDTH UINT_FAST8_WIDTH UINT_LEAST16_WIDTH UINT_LEAST32_WIDTH
UINT_LEAST64_WIDTH UINT_LEAST8_WIDTH UINT_WIDTH ULLONG_MAX ULLONG_WIDTH ULONG_LONG_MAX ULONG_MAX
ULONG_WIDTH USHRT_MAX USHRT_WIDTH WCHAR_WIDTH WCONTINUED WEOF WEXITED WINT_WIDTH WNOHANG WNOWAIT
WORD_BIT WSTOPPED WUNTRACED W_OK XATTR_LIST_MAX XATTR_NAME_MAX XATTR_SIZE_MAX X_OK
atomic_compare_exchange_strong_explicit atomic_compare_exchange_weak_explicit
atomic_exchange_explicit atomic_fetch_add_explicit atomic_fetch_and_explicit
atomic_fetch_or_explicit atomic_fetch_sub_explicit atomic_fetch_xor_explicit atomic_init
atomic_load_explicit atomic_store_explicit complex errno math_errhandling noreturn sa_handler
sa_sigaction sched_priority si_addr si_addr_lsb si_arch si_band si_call_addr si_fd si_int si_lower
si_overrun si_pid si_pkey si_ptr si_status si_stime si_syscall si_timerid si_uid si_upper si_utime
si_value sigev_notify_attributes sigev_notify_function stderr stdin stdout
)";

// Functions, types, objects and macros with parameters of these headers and of <unistd.h>,
// <fcntl.h>, <poll.h>, <sys/socket.h>, <sys/stat.h> and <sys/time.h>, and the namespace of C++.
// Left out are the same, and functions whose names begin with pthread_ or end with
// _l, _np, _unlocked or 64.
constexpr std::string_view kDeclared = R"(
ATOMIC_VAR_INIT CMPLX CMPLXF CMPLXL CPU_ALLOC CPU_ALLOC_SIZE CPU_AND CPU_AND_S CPU_CLR CPU_CLR_S
CPU_COUNT CPU_COUNT_S CPU_EQUAL CPU_EQUAL_S CPU_FREE CPU_ISSET CPU_ISSET_S CPU_OR CPU_OR_S CPU_SET
CPU_SET_S CPU_XOR CPU_XOR_S CPU_ZERO CPU_ZERO_S FD_CLR FD_ISSET FD_SET FD_ZERO FILE INT16_C INT32_C
INT64_C INT8_C INTMAX_C TEMP_FAILURE_RETRY UINT16_C UINT32_C UINT64_C UINT8_C UINTMAX_C WEXITSTATUS
WIFCONTINUED WIFEXITED WIFSIGNALED WIFSTOPPED WSTOPSIG WTERMSIG a64l accept accept4 access acct
adjtime alarm aligned_alloc arc4random arc4random_buf arc4random_uniform asctime asctime_r asprintf
assert assert_perror at_quick_exit atexit atof atoi atol atoll atomic_compare_exchange_strong
atomic_compare_exchange_weak atomic_exchange atomic_fetch_add atomic_fetch_and atomic_fetch_or
atomic_fetch_sub atomic_fetch_xor atomic_flag_clear atomic_flag_clear_explicit
atomic_flag_test_and_set atomic_flag_test_and_set_explicit atomic_is_lock_free atomic_load
atomic_signal_fence atomic_store atomic_thread_fence basename be16toh be32toh be64toh bind blkcnt_t
blksize_t brk bsearch btowc c16rtomb c32rtomb c8rtomb cacos cacosf cacosh cacoshf cacoshl cacosl
caddr_t call_once canonicalize canonicalize_file_name canonicalizef canonicalizel casin casinf
casinh casinhf casinhl casinl catan catanf catanh catanhf catanhl catanl ccos ccosf ccosh ccoshf
ccoshl ccosl chdir chmod chown chroot clearenv clearerr clock clock_adjtime clock_getcpuclockid
clock_getres clock_gettime clock_nanosleep clock_settime clock_t clockid_t clog10 clog10f clog10l
clone close close_range closefrom cmsghdr cnd_broadcast cnd_destroy cnd_init cnd_signal cnd_t
cnd_timedwait cnd_wait comparison_fn_t confstr connect cookie_close_function_t
cookie_io_functions_t cookie_read_function_t cookie_seek_function_t cookie_write_function_t
copy_file_range cpu_set_t creat crypt ctermid ctime ctime_r cuserid daddl daddr_t daemon daylight
ddivl dev_t dfmal difftime div div_t dmull double_t dprintf drand48 drand48_data drand48_r dsqrtl
dsubl dup dup2 dup3 duplocale dysize eaccess ecvt ecvt_r endusershell environ erand48 erand48_r
error_t euidaccess execl execle execlp execv execve execveat execvp execvpe explicit_bzero
f_owner_ex faccessat fadd faddl fallocate fchdir fchmod fchmodat fchown fchownat fclose fcloseall
fcntl fcvt fcvt_r fd_mask fd_set fdatasync fdiv fdivl fdopen feclearexcept fedisableexcept
feenableexcept fegetenv fegetexcept fegetexceptflag fegetmode fegetround feholdexcept femode_t
fenv_t feof feraiseexcept ferror fesetenv fesetexcept fesetexceptflag fesetmode fesetround
fetestexcept fetestexceptflag feupdateenv fexcept_t fexecve fflush ffma ffmal ffsll fgetc fgetpos
fgets fgetwc fgetws file_handle fileno float_t flock flockfile fmaximum fmaximum_mag
fmaximum_mag_num fmaximum_mag_numf fmaximum_mag_numl fmaximum_magf fmaximum_magl fmaximum_num
fmaximum_numf fmaximum_numl fmaximumf fmaximuml fmaxmag fmaxmagf fmaxmagl fmemopen fminimum
fminimum_mag fminimum_mag_num fminimum_mag_numf fminimum_mag_numl fminimum_magf fminimum_magl
fminimum_num fminimum_numf fminimum_numl fminimumf fminimuml fminmag fminmagf fminmagl fmul fmull
fopen fopencookie fork fpathconf fpclassify fpos_t fpregset_t fputwc fputws fread freelocale
freopen fromfp fromfpf fromfpl fromfpx fromfpxf fromfpxl fsblkcnt_t fseek fseeko fsetpos fsfilcnt_t
fsid_t fsqrt fsqrtl fstat fstatat fsub fsubl fsync ftell ftello ftruncate ftrylockfile funlockfile
futimens futimes futimesat fwide fwprintf fwscanf gcvt get_current_dir_name getc getchar getcpu
getcwd getdate getdate_err getdate_r getdelim getdomainname getdtablesize getegid getentropy getenv
geteuid getgid getgroups gethostid gethostname getitimer getline getloadavg getlogin getlogin_r
getopt getpagesize getpass getpayload getpayloadf getpayloadl getpeername getpgid getpgrp getpid
getppid getpt getresgid getresuid getsid getsockname getsockopt getsubopt gettid gettimeofday
getuid getumask getusershell getw getwc getwchar getwd gid_t gmtime gmtime_r grantpt greg_t
gregset_t group_member gsignal htobe16 htobe32 htobe64 htole16 htole32 htole64 id_t imaxdiv
imaxdiv_t initstate initstate_r ino_t int_fast16_t int_fast32_t int_fast8_t int_least16_t
int_least32_t int_least8_t iovec isalnum_l isalpha_l isascii isascii_l isatty isblank_l iscntrl_l
isctype isdigit_l isfdtype isfinite isgraph_l isgreater isgreaterequal isless islessequal
islessgreater islower_l isnormal isprint_l ispunct_l isspace_l issubnormal isunordered isupper_l
iswalnum iswalpha iswblank iswcntrl iswctype iswdigit iswgraph iswlower iswprint iswpunct iswspace
iswupper iswxdigit isxdigit_l itimerspec itimerval jmp_buf jrand48 jrand48_r key_t kill
kill_dependency killpg l64a lchmod lchown lcong48 lcong48_r lconv ldiv ldiv_t le16toh le32toh
le64toh lgamma_r lgammaf_r lgammal_r linger link linkat listen lldiv lldiv_t llogb llogbf llogbl
locale_t localeconv localtime localtime_r lockf loff_t longjmp lrand48 lrand48_r lseek lstat
lutimes mblen mbrlen mbrtoc16 mbrtoc32 mbrtoc8 mbrtowc mbsinit mbsnrtowcs mbsrtowcs mbstate_t
mbstowcs mbtowc mcontext_t memccpy memfrob memmem memory_order memory_order_acq_rel
memory_order_acquire memory_order_consume memory_order_relaxed memory_order_release
memory_order_seq_cst memrchr mkdir mkdirat mkdtemp mkfifo mkfifoat mknod mknodat mkostemp mkostemps
mkstemp mkstemps mktemp mktime mmsghdr mode_t mrand48 mrand48_r msghdr mtx_destroy mtx_init
mtx_lock mtx_plain mtx_recursive mtx_t mtx_timed mtx_timedlock mtx_trylock mtx_unlock
name_to_handle_at nanosleep newlocale nextdown nextdownf nextdownl nextup nextupf nextupl nfds_t
nice nlink_t nrand48 nrand48_r obstack obstack_printf obstack_vprintf off_t on_exit once_flag open
open_by_handle_at open_memstream open_wmemstream openat optarg opterr optind optopt osockaddr
pathconf pause pclose perror pid_t pipe pipe2 poll pollfd popen posix_fadvise posix_fallocate
posix_memalign posix_openpt ppoll pread profil program_invocation_name
program_invocation_short_name pselect psiginfo psignal pthread_cleanup_pop
pthread_cleanup_pop_restore_np pthread_cleanup_push pthread_cleanup_push_defer_np ptsname ptsname_r
putc putenv putw putwc putwchar pwrite qecvt qecvt_r qfcvt qfcvt_r qgcvt qsort qsort_r quad_t
quick_exit raise rand rand_r random random_data random_r rawmemchr read readahead readlink
readlinkat realloc reallocarray realpath recv recvfrom recvmmsg recvmsg register_t remove rename
renameat renameat2 revoke rewind rmdir roundeven roundevenf roundevenl rpmatch sa_family_t sbrk
sched_get_priority_max sched_get_priority_min sched_getaffinity sched_getcpu sched_getparam
sched_getscheduler sched_param sched_rr_get_interval sched_setaffinity sched_setparam
sched_setscheduler sched_yield secure_getenv seed48 seed48_r select send sendmmsg sendmsg sendto
setbuf setbuffer setdomainname setegid setenv seteuid setgid sethostid sethostname setitimer setjmp
setlinebuf setlocale setlogin setns setpayload setpayloadf setpayloadl setpayloadsig setpayloadsigf
setpayloadsigl setpgid setpgrp setregid setresgid setresuid setreuid setsid setsockopt setstate
setstate_r settimeofday setuid setusershell setvbuf shutdown sig_atomic_t sig_t sigaction sigaddset
sigaltstack sigandset sigblock sigcontext sigdelset sigemptyset sigevent sigevent_t sigfillset
siggetmask sighandler_t sighold sigignore siginfo_t siginterrupt sigisemptyset sigismember
sigjmp_buf siglongjmp sigmask signal signbit signgam sigorset sigpause sigpending sigprocmask
sigqueue sigrelse sigreturn sigset sigset_t sigsetjmp sigsetmask sigstack sigsuspend sigtimedwait
sigval sigval_t sigwait sigwaitinfo sleep sockaddr sockaddr_storage sockatmark socket socketpair
socklen_t splice srand srand48 srand48_r srandom srandom_r ssignal ssize_t stack_t stat statx
statx_timestamp std stpncpy strcasestr strchrnul strcoll strdupa strerror strerror_r strfromd
strfromf strfroml strfry strndupa strnlen strptime strsep strsignal strtod strtof strtoimax strtok
strtok_r strtol strtold strtoll strtoq strtoul strtoull strtoumax strtouq strverscmp strxfrm
suseconds_t swab swprintf swscanf symlink symlinkat sync sync_file_range syncfs syscall sysconf
system sysv_signal tcgetpgrp tcsetpgrp tee tempnam tgkill thrd_busy thrd_create thrd_current
thrd_detach thrd_equal thrd_error thrd_exit thrd_join thrd_nomem thrd_sleep thrd_start_t
thrd_success thrd_t thrd_timedout thrd_yield time time_t timegm timelocal timer_create timer_delete
timer_getoverrun timer_gettime timer_settime timer_t timespec timespec_get timespec_getres timeval
timex timezone tm tmpfile tmpnam tmpnam_r toascii_l totalorder totalorderf totalorderl
totalordermag totalordermagf totalordermagl towctrans towlower towupper truncate tss_create
tss_delete tss_dtor_t tss_get tss_set tss_t ttyname ttyname_r ttyslot tzname tzset u_char u_int
u_int16_t u_int32_t u_int8_t u_long u_quad_t u_short ualarm ucontext_t ucred ufromfp ufromfpf
ufromfpl ufromfpx ufromfpxf ufromfpxl uid_t uint uint_fast16_t uint_fast32_t uint_fast8_t
uint_least16_t uint_least32_t uint_least8_t ulong umask ungetc ungetwc unlink unlinkat unlockpt
unsetenv unshare useconds_t uselocale ushort usleep utimensat utimes va_arg va_copy va_end va_list
va_start valloc vasprintf vdprintf vfork vfwprintf vfwscanf vhangup vmsplice vswprintf vswscanf
vwprintf vwscanf wcpcpy wcpncpy wcrtomb wcscasecmp wcscat wcschr wcschrnul wcscmp wcscoll wcscpy
wcscspn wcsdup wcsftime wcslen wcsncasecmp wcsncat wcsncmp wcsncpy wcsnlen wcsnrtombs wcspbrk
wcsrchr wcsrtombs wcsspn wcsstr wcstod wcstof wcstoimax wcstok wcstol wcstold wcstoll wcstombs
wcstoq wcstoul wcstoull wcstoumax wcstouq wcswcs wcswidth wcsxfrm wctob wctomb wctrans wctrans_t
wctype wctype_t wcwidth wint_t wmemchr wmemcmp wmemcpy wmemmove wmempcpy wmemset wprintf write
wscanf
)";

// Keywords of C++ that are none in C.
constexpr std::string_view kCppKeywords = R"(
and and_eq bitand bitor catch char16_t char32_t char8_t class co_await co_return co_yield compl
concept const_cast consteval constinit decltype delete dynamic_cast explicit export friend mutable
namespace new noexcept not not_eq operator or or_eq private protected public reinterpret_cast
requires static_cast template this throw try typeid typename using virtual xor xor_eq
)";

void addWords(std::string_view text, std::unordered_set<std::string_view>& words) {
  constexpr std::string_view kSeparators = " \n";
  for (std::size_t begin = 0;
       (begin = text.find_first_not_of(kSeparators, begin)) != std::string_view::npos;) {
    const std::size_t end = text.find_first_of(kSeparators, begin);
    words.insert(text.substr(begin, end - begin));
    begin = end;
  }
}

// PRId32, SCNxMAX and so on; not what has got an underscore.
bool isFormat(std::string_view name) {
  if (name.size() < 5 || name.back() == '_') return false;
  const std::string_view begin = name.substr(0, 3);
  const auto size = static_cast<unsigned char>(name[4]);
  return (begin == "PRI" || begin == "SCN") && std::string_view("dioxuX").find(name[3]) < 6 &&
         (std::isdigit(size) != 0 || std::isupper(size) != 0);
}

}  // namespace

bool LibraryNames::anywhere(std::string_view name) const {
  return everywhere_.count(name) != 0 || isFormat(name);
}

LibraryNames::LibraryNames() {
  addWords(kMacros, everywhere_);
  addWords(kCppKeywords, everywhere_);
  addWords(kDeclared, declared_);
}

}  // namespace refhost
