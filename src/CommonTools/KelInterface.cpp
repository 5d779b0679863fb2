#include <CommonTools/KelInterface.h>
