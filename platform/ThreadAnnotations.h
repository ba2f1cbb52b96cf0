// Clang's thread-safety annotations: which lock guards which field. Other compilers ignore them.
// https://clang.llvm.org/docs/ThreadSafetyAnalysis.html
#pragma once

#if defined(__clang__)
#define QUORVEL_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define QUORVEL_THREAD_ATTRIBUTE(x)
#endif

#define CAPABILITY(x) QUORVEL_THREAD_ATTRIBUTE(capability(x))
#define SCOPED_CAPABILITY QUORVEL_THREAD_ATTRIBUTE(scoped_lockable)
#define GUARDED_BY(x) QUORVEL_THREAD_ATTRIBUTE(guarded_by(x))
#define PT_GUARDED_BY(x) QUORVEL_THREAD_ATTRIBUTE(pt_guarded_by(x))
#define REQUIRES(...) QUORVEL_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define EXCLUDES(...) QUORVEL_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
#define ACQUIRE(...) QUORVEL_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define RELEASE(...) QUORVEL_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
#define TRY_ACQUIRE(...) QUORVEL_THREAD_ATTRIBUTE(try_acquire_capability(__VA_ARGS__))
#define NO_THREAD_SAFETY_ANALYSIS QUORVEL_THREAD_ATTRIBUTE(no_thread_safety_analysis)
