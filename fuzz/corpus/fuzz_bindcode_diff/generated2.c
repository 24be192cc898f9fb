{
	pSgeWorkCallData pSgeWCD;

	/********************************************************/
	/********* users initial code is inserted here **********/
	/********************************************************/

	pSgeWCD = getSgeWorkCallData(UxWidget,
		100,
		"",
		"",
		"a.b", NO_WP);

	SgeSetCallDetail(pSgeWCD, FROM_CACHE,
		(XtPointer)0x0,
		PAGEDW_INDEX, (XtPointer)v:1,
		(XtPointer)0x0,
		QUEUE_TO_FILE);
	VlVaSetCallOptions(pSgeWCD,
		"k : v",
		VULL);

	DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_DSQL);

	/*******************************************************/
	/********** users final code is inserted here **********/
	/*******************************************************/

	/*************** END OF VELMORA FINAL CODE  ***************************/
}