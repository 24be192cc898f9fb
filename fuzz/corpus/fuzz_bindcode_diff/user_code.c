{
	int n = 0;
	n++;
}
