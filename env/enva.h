/* ORVELA interpreter vocabulary: start-up options */
mac=PC
env=env/
ima=ima/
exe=exe/
buf=100000
eva=100000
com=10000
esc=27
voc1=Voc_eng
voc2=Voc_xxx
