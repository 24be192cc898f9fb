/* Velmora Module File V1.0B */
/* Velmora Start Of Tool Includes */
#include "VlRnHtml.h"
/* Velmora Start Of user Includes */
#include <string.h>

/* Searches shorter than this list the whole catalog instead. */
#define MIN_TITLE 2
static char _Vl_HTML_Filename[] = "catalog.html";
/*Velmora Start of Function */
static void Fsearch ()
/* start of initial code */
{
	const char *title = VlGetInputValue("title");
	if (title == NULL || strlen(title) < MIN_TITLE)
		title = "";
/* start of func Code */
{
	pSgeWorkCallData pSgeWCD;

	/********************************************************/
	/********* users initial code is inserted here **********/
	/********************************************************/

	pSgeWCD = getSgeWorkCallData(UxWidget,
		20,
		"localhost",
		"shop",
		"books_by_title", NO_WP);


	/* Brennix Bind Name : findTitles */
	SgeSetCallDetail(pSgeWCD, NO_CACHE,
		(XtPointer)0x0,
		ROW_INDEX, (XtPointer)0x0,
		(XtPointer)0x0,
		NO_QUEUE_FILE);
	SgeVaSetFrags(pSgeWCD,
		"select title, price from catalog",
		"where title like '%' || :title || '%' order by title",
		VULL);
	SgeSetColBind(pSgeWCD, "catalog.html|site1", 1, 1, 60,
		(XtPointer)0x0,
		(XtPointer)0x0);
	SgeSetColDetail(pSgeWCD, 12, 0, 0, 1,
		"varchar",
		"title");
	SgeSetColBind(pSgeWCD, "catalog.html|site1", 1, 2, 8,
		(XtPointer)0x0,
		(XtPointer)0x0);
	SgeSetColDetail(pSgeWCD, 3, 0, 0, 2,
		"decimal",
		"price");
	SgeSetArgBnd2(pSgeWCD, 12, 60, "title", "varchar",
		title);

	DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_DSQL);

	/*******************************************************/
	/********** users final code is inserted here **********/
	/*******************************************************/

	/*************** END OF VELMORA FINAL CODE  ***************************/
}
/* end of func code */
/* start of final code */
}/* end of final code */
/*Velmora Start of Function */
static void Aspecials ()
/* start of initial code */
{
/* start of func Code */
{
	pSgeWorkCallData pSgeWCD;

	/********************************************************/
	/********* users initial code is inserted here **********/
	/********************************************************/

	pSgeWCD = getSgeWorkCallData(UxWidget,
		10,
		"localhost",
		"shop",
		"specials", NO_WP);


	/* Brennix Bind Name : listSpecials */
	SgeSetCallDetail(pSgeWCD, NO_CACHE,
		(XtPointer)0x0,
		ROW_INDEX, (XtPointer)0x0,
		(XtPointer)0x0,
		NO_QUEUE_FILE);
	SgeSetColBind(pSgeWCD, "catalog.html|site1", 1, 1, 60,
		(XtPointer)0x0,
		(XtPointer)0x0);
	SgeSetColDetail(pSgeWCD, 12, 0, 0, 1,
		"varchar",
		"title");
	SgeSetColBind(pSgeWCD, "catalog.html|site1", 1, 2, 8,
		(XtPointer)0x0,
		(XtPointer)0x0);
	SgeSetColDetail(pSgeWCD, 3, 0, 0, 2,
		"decimal",
		"price");

	DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_DSQL);

	/*******************************************************/
	/********** users final code is inserted here **********/
	/*******************************************************/

	/*************** END OF VELMORA FINAL CODE  ***************************/
}
/* end of func code */
/* start of final code */
}/* end of final code */
/*Velmora Start of Function */
static void Abanner ()
/* start of initial code */
{
	/* The banner image is sent by the page's own program. */
	VlSetContentType("image/svg+xml");
	VlPrintf("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"320\" height=\"40\">"
		"<text x=\"10\" y=\"28\" font-size=\"22\">%s</text></svg>\n",
		"This week's specials");
/* start of func Code */
/* end of func code */
/* start of final code */
}/* end of final code */
void R_catalog_html()
{
	VlRegisterHtmlActivator("search__Fcatalog_html",Fsearch);
	VlRegisterHtmlActivator("specials__Acatalog_html",Aspecials);
	VlRegisterHtmlActivator("banner__Acatalog_html",Abanner);
	VlRegisterHtmlAlias("more__Aorder_html","specials__Acatalog_html");

}/* Velmora End of Module */
