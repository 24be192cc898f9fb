/* The example's generated main module under another name, so that the
 * runtime benchmark can answer requests in its own process the way shop.cgi
 * does. */
#define main VlShopMain
#include "../examples/shop/shop.c"
