/// TAVIX20: the whole public interface.
#pragma once

#include "TAVIX20/platform/collections.h"
#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/dc.h"
#include "TAVIX20/platform/geometry.h"
#include "TAVIX20/platform/region.h"
#include "TAVIX20/platform/types.h"

#include "TAVIX20/support/stdlib.h"

#include "TAVIX20/containers/blob_rect_array.h"
#include "TAVIX20/containers/color_pixel_array.h"
#include "TAVIX20/containers/cycle_match_result_array.h"
#include "TAVIX20/containers/diamond_match_result_array.h"
#include "TAVIX20/containers/double_array.h"
#include "TAVIX20/containers/line_array.h"
#include "TAVIX20/containers/line_fit.h"
#include "TAVIX20/containers/long_array.h"
#include "TAVIX20/containers/match_rate_item_array.h"
#include "TAVIX20/containers/match_result_array.h"
#include "TAVIX20/containers/match_src_array.h"
#include "TAVIX20/containers/pixel_array.h"
#include "TAVIX20/containers/pixel_array_array.h"
#include "TAVIX20/containers/pixel_bunch_array.h"
#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/containers/point_array_array.h"
#include "TAVIX20/containers/rect_array.h"
#include "TAVIX20/containers/size_array.h"
#include "TAVIX20/containers/sort_byte_array.h"
#include "TAVIX20/containers/sort_string_array.h"
#include "TAVIX20/containers/ushort_array.h"

#include "TAVIX20/image/tavix_image.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include "TAVIX20/display/tavix_wnd.h"
