#include "phone/search/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(SearchUIAppIconImage)                                                                                            \
    X(SearchUIImageCache)                                                                                              \
    X(SearchUIImageView)
// end sorted

PHONE_CLASS_LIST(searchUIClasses, CLASSES)
