// The tests of locks unlock what they don't hold, to see what the system answers. The thread sanitizer is not
// to take that for a fault; all else it still reports.
extern "C" char const* __tsan_default_options();

extern "C" char const* __tsan_default_options()
{
    return "report_mutex_bugs=0:report_destroy_locked=0";
}
