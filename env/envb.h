/* ORVELA graphic vocabulary: start-up options */
cx=1
cy=-1
rvb=8
zbu=1
alea=10000
gra=1
son=
PER=100
