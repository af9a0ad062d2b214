#include "platform/VelmoDspSystemLog.h"

#include <syslog.h>

namespace velmodsp {

void WriteToSystemLog(const char* text) {
    openlog("velmodsp", LOG_PID | LOG_CONS | LOG_NDELAY | LOG_PERROR, LOG_USER);
    setlogmask(LOG_UPTO(LOG_NOTICE));  // NOLINT(concurrency-mt-unsafe): all threads set the same mask
    syslog(LOG_NOTICE, "%s", text);
    closelog();
}

}  // namespace velmodsp
