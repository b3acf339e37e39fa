// The compiled half of Asio, Beast and Boost.JSON: once, here, so that the program links none of
// their libraries.
#include <boost/asio/impl/src.hpp>
#include <boost/asio/ssl/impl/src.hpp>
#include <boost/beast/src.hpp>
#include <boost/json/src.hpp>
