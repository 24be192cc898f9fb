/* Velmora Module File V1.0B */
/* Velmora Start Of Tool Includes */
#include "VlRnHtml.h"
/* Velmora Start Of user Includes */
#include <stdlib.h>
static char _Vl_HTML_Filename[] = "order.html";
/*Velmora Start of Function */
static void Forder ()
/* start of initial code */
{
	const char *quantity = VlGetInputValue("quantity");
	if (quantity == NULL || atoi(quantity) < 1)
		return;
/* start of func Code */
{
	pSgeWorkCallData pSgeWCD;

	/********************************************************/
	/********* users initial code is inserted here **********/
	/********************************************************/

	pSgeWCD = getSgeWorkCallData(UxWidget,
		1,
		"localhost",
		"shop",
		"place_order", NO_WP);


	/* Brennix Bind Name : placeOrder */
	SgeSetCallDetail(pSgeWCD, NO_CACHE,
		(XtPointer)0x0,
		ROW_INDEX, (XtPointer)0x0,
		(XtPointer)0x0,
		NO_QUEUE_FILE);
	SgeVaSetFrags(pSgeWCD,
		"insert into orders (customer, title, quantity) values (:customer, :title, :quantity)",
		VULL);
	SgeSetArgBnd2(pSgeWCD, 12, 60, "customer", "varchar",
		VlGetInputValue("customer"));
	SgeSetArgBnd2(pSgeWCD, 12, 60, "title", "varchar",
		VlGetInputValue("title"));
	SgeSetArgBnd2(pSgeWCD, 4, 4, "quantity", "int",
		VlGetInputValue("quantity"));

	DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_DSQL);

	/*******************************************************/
	/********** users final code is inserted here **********/
	/*******************************************************/

	/*************** END OF VELMORA FINAL CODE  ***************************/
}
/* end of func code */
/* start of final code */
	/* The page named by the startup option confirms the order. */
}/* end of final code */
/*Velmora Start of Function */
static void Acart ()
/* start of initial code */
{
	/* The cart applet loads its classes from here. */
/* start of func Code */
/* end of func code */
/* start of final code */
}/* end of final code */
void R_order_html()
{
	VlRegisterHtmlActivator("order__Forder_html",Forder);
	VlRegisterHtmlActivator("cart__Aorder_html",Acart);

}/* Velmora End of Module */
