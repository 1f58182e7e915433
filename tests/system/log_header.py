"""What the log of an Evaluator begins with."""

import datetime


def log_header(name, typecode="unknown", scale_t=" .2", scale_a=" .1"):
    """The header of a log whose Evaluator sent `parameter_frame()`."""
    types = [("T1", "Time", "HH:MM:SS", None, None),
             ("T2", "Tsignal", "  % alarm", "1", "255"),
             ("T3", "Speed", "RPM /10", " .1", "16711680"),
             ("T4", "Angular Signal", "", scale_t, "255"),
             ("T5", "Angular Acceleration", "", scale_a, "16711680"),
             ("T6", "Tvoltage", "  mV x50", ".5", "65280"),
             ("T7", "Teff DC", "  %alarm", "1", "16711935"),
             ("T8", "Teff AC", "  %alarm", "1", "16777215")]
    chart = [("AXISGRIDCOLOR", "4210752"), ("LEGENDFONTCOLOR", "0"), ("XAXISLABELFONTCOLOR", "0"),
             ("YAXISLABELFONTCOLOR", "0"), ("TITLEFONTCOLOR", "255"), ("XAXISTICKCOLOR", "0"),
             ("XAXISDATETIMEFORMAT", "d/m hh:nn:ss"), ("BACKGROUNDCOLOR", "12632256"),
             ("GRIDBACKGROUNDCOLOR", "12632256"), ("GRIDLINESTYLE", "2"), ("XAXISMIN", " 0"),
             ("XAXISSPAN", " 1.38888888888889E-03"), ("XAXISTICKS", "6"), ("YAXISMIN", " 0"),
             ("YAXISSPAN", " 150"), ("YAXISTICKS", "7")]
    engine = [("TYPECODE", typecode), ("ENGINETYPE", "4"), ("CYLCONF", "4"), ("NUMZYL", "6"),
              ("TSTTIME", "600"), ("TSTLEN", "30"), ("FWVERS", "V2.10-0718"), ("IALARMLEVEL1", "6"),
              ("IALARMLEVEL2", "7"), ("IALMRPM", "400"), ("IMPOFFSET", "17"), ("IALARMDELAY", "8"),
              ("IALARMLEN", "9"), ("IALARMLEVEL", "60"), ("DCALARMPERCENT", "80"), ("THEFF_ALM", "11"),
              ("THEFF_CNT", "12"), ("ALMINHIBIT_TIME", "90"), ("EVASNR", "EV020117"), ("ALARMLEVEL", "3"),
              ("PREALARMLEVEL", "2"), ("OVERSPEED", "900"), ("RATEDSPEED", "750")]
    lines = ['<?xml version="1.0"?>', "<!DOCTYPE LOG >", "<HEADER>", "    <INFO>",
             "        <VERSION> MTyxo Version 2.10_4  02.07.2026 </VERSION> ",
             f"        <LOGNAME> {name} </LOGNAME> ",
             f"        <LOGDATE> {datetime.date.today():%Y%m%d} </LOGDATE>", "    </INFO>", "    <PARAMETER>"]
    lines += [f"        <{tag}>{value}</{tag}>" for tag, value in chart]
    lines += [f"        <{tag}> {value} </{tag}>" for tag, value in engine]
    lines += ["        <FIRINGORDER> 1 5 3 6 2 4 </FIRINGORDER>",
              "        <FIRINGANGLE> 0 120 120 120 120 120 </FIRINGANGLE>",
              "    </PARAMETER>", "    <ENTRYTYPES>"]
    for tag, title, unit, scale, color in types:
        lines += [f"        <{tag}>", f"            <NAME>{title}</NAME>", f"            <UNIT>{unit}</UNIT>"]
        lines += [f"            <SCALE>{scale}</SCALE>"] if scale else []
        lines += [f"            <COLOR>{color}</COLOR>"] if color else []
        lines += [f"        </{tag}>"]
    lines += ["    </ENTRYTYPES>", "    <STRUCTURE>",
              "        <REC1><LINEAR> T1 T2 T3 T6 T7 T8 </LINEAR></REC1>",
              "        <REC2><POLAR> T1 " + "T4 " * 256 + "</POLAR></REC2>",
              "        <REC3><POLAR> T1 " + "T5 " * 256 + "</POLAR></REC3>",
              "    </STRUCTURE>", "</HEADER>", "<LOG>"]
    return lines
