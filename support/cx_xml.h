/// All classes of XML documents.
#pragma once

#include "TAVIX20/support/cx_xml_attribute.h"
#include "TAVIX20/support/cx_xml_document.h"
#include "TAVIX20/support/cx_xml_element.h"
#include "TAVIX20/support/cx_xml_handle.h"
#include "TAVIX20/support/cx_xml_leaves.h"
#include "TAVIX20/support/cx_xml_string.h"
#include "TAVIX20/support/std_string.h"
