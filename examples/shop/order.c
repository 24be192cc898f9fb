/* Velmora Module File V1.0B */
/* Velmora Start Of Tool Includes */
#include "VlRnHtml.h"
/* Velmora Start Of user Includes */
static char _Vl_HTML_Filename[] = "order.html";
/*Velmora Start of Function */
static void Forder ()
/* start of initial code */
{
	/* Copies come from a list of 1 to 3; the database refuses fewer than 1. */
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
		"returning 'Thank you, ' || customer || '. Ordered: ' || quantity || ' x ' || title",
		"as confirmation",
		VULL);
	SgeSetColBind(pSgeWCD, "order.html|site1", 1, 1, 200,
		(XtPointer)0x0,
		(XtPointer)0x0);
	SgeSetColDetail(pSgeWCD, 12, 0, 0, 1,
		"varchar",
		"confirmation");
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
	/* The confirmation bound to the order page answers the order. */
}/* end of final code */
/*Velmora Start of Function */
static void Acart ()
/* start of initial code */
{
	/* The cart applet loads its classes from here. */
	if (VlSendFile("Cart.class") != 0) {
		VlSetStatus(404);
		VlSetContentType("text/plain; charset=utf-8");
		VlPrintf("Cart.class is not installed.\n");
	}
/* start of func Code */
/* end of func code */
/* start of final code */
}/* end of final code */
void R_order_html()
{
	VlRegisterHtmlActivator("order__Forder_html",Forder);
	VlRegisterHtmlActivator("cart__Aorder_html",Acart);

}/* Velmora End of Module */
