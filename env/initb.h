env/
enva.h,koma.h,mesa.h
envb.h,komb.h,mesb.h
