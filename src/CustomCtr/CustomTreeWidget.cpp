#include <CustomCtr/CustomTreeWidget.h>
