#include "phone/search/classes.h"

// sorted
#define CLASSES(X) X(SearchUIAppIconImage)
// end sorted

PHONE_CLASS_LIST(searchUIClasses, CLASSES)
