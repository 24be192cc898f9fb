/*
 * Main module of a Velmora application: the entry of the CGI program.
 *
 * vlnogui generates this file from the distribution's main.tem on every
 * project write. Edit only between the User Includes, Initial Code and Final
 * Code lines: that text is kept. Everything else is regenerated.
 */
#include <stdio.h>
#include <stdlib.h>
#include "VlRnHtml.h"

/* Velmora Start Of User Includes */
#include <time.h>
/* Velmora End Of User Includes */

/* Registration functions of the page modules. */
/* Velmora Start Of Callback Declarations */
extern void R_catalog_html ();
extern void R_order_html ();
/* Velmora End Of Callback Declarations */

int main(int argc, char **argv)
{
	int status;

	/* Velmora Start Of Initial Code */
	time_t started = time(NULL);
	/* Velmora End Of Initial Code */

	/* Activators of every page, then the runtime settings of the project. */
	/* Velmora Start Of Callback Registration */
	R_catalog_html ();
	R_order_html ();
	VlInitHeaders();
	VlRelocatableProject(0);
	VlSetDefaults("localhost","shop");
	VlSetStartupHtml("catalog.html");
	VlSetHtmlURL("http://localhost/shop");
	VlSetApiMaxNum(2);
	VlAllowShutDown(1);
	VlSetCacheNumConn(2);
	VlSetSessTimeOut(1200);
	VlSetGifURL("http://localhost/shop/images");
	VlSetDefaultVendor(SGESQLITE);
	VlSetOrbHost("localhost");
	VlSetDefaultUser("shop");
	VlSetDefaultPass("");
	VlAllowSQL(0);
	VlAllowConfigFile(1);
	VlSetConfigFile("shop.cfg");
	VlSetHtmlDir("../www/shop");
	VlSetPrintArgs(0);
	VlSetPrintEnv(0);
	VlProcessLogin(0);
	VlSetDoCommonLog(0);
	VlSetUseAppLogin(0);
	VlSetStateHost("localhost");
	/* Velmora End Of Callback Registration */

	status = VlProcessRequest(argc, argv);

	/* Velmora Start Of Final Code */
	fprintf(stderr, "shop: request answered in %ld s\n", (long)(time(NULL) - started));
	/* Velmora End Of Final Code */

	return status;
}
