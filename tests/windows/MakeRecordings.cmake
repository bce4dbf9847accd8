# cmake -DFOLDER=<folder> -DCOUNT=<number> -P: fills a folder with that many empty recordings. Wine
# itself takes a minute for ten thousand of them.
file(MAKE_DIRECTORY "${FOLDER}")
foreach(number RANGE 1 ${COUNT})
    file(TOUCH "${FOLDER}/call ${number}.wav")
endforeach()
