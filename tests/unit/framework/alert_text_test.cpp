#include "framework/alert_text.h"

#include <gtest/gtest.h>
